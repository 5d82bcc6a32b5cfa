#include "base/WindowsVersion.h"

#include "base/Text.h"

namespace v5 {

namespace {

// Windows 11 still calls itself "Windows 10" in the registry; only the build number tells.
constexpr std::uint32_t kFirstBuildOfWindows11 = 22000;

std::wstring Edition(const WindowsVersion& version) {
    std::wstring name = version.productName.empty() ? L"Windows" : version.productName;
    if (!version.isServer && version.build >= kFirstBuildOfWindows11) {
        name = ReplaceAll(name, L"Windows 10", L"Windows 11");
    }
    return name.starts_with(L"Microsoft") ? name : L"Microsoft " + name;
}

std::wstring Number(const WindowsVersion& version) {
    std::wstring number =
        std::to_wstring(version.major) + L"." + std::to_wstring(version.minor) + L"." + std::to_wstring(version.build);
    return version.revision == 0 ? number : number + L"." + std::to_wstring(version.revision);
}

}  // namespace

std::wstring DescribeWindows(const WindowsVersion& version) {
    std::wstring text = Edition(version);
    if (!version.servicePack.empty()) {
        text += L" " + version.servicePack;
    }
    if (!version.displayVersion.empty()) {
        text += L", version " + version.displayVersion;
    }
    return text + L" (" + Number(version) + L"), " + (version.is64Bit ? L"64-bit" : L"32-bit");
}

}  // namespace v5
