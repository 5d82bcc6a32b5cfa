#include "platform/SystemInfo.h"

#include <windows.h>

#include <array>

#include "base/WindowsVersion.h"

namespace v5 {

namespace {

// The key under which Windows describes itself; closed at the end of its life. It is opened in the 64-bit view, since a
// 32-bit process's own view lacks some of the values.
class VersionKey {
  public:
    VersionKey() {
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0,
                      KEY_QUERY_VALUE | KEY_WOW64_64KEY, &mKey);
    }
    ~VersionKey() {
        if (mKey != nullptr) {
            RegCloseKey(mKey);
        }
    }
    VersionKey(const VersionKey&) = delete;
    VersionKey& operator=(const VersionKey&) = delete;

    // A value; empty or 0 when there is none.
    std::wstring Text(const wchar_t* name) const {
        std::array<wchar_t, 256> text{};
        DWORD size = sizeof text;
        RegGetValueW(mKey, nullptr, name, RRF_RT_REG_SZ | RRF_ZEROONFAILURE, nullptr, text.data(), &size);
        return text.data();
    }
    DWORD Number(const wchar_t* name) const {
        DWORD number = 0;
        DWORD size = sizeof number;
        RegGetValueW(mKey, nullptr, name, RRF_RT_REG_DWORD | RRF_ZEROONFAILURE, nullptr, &number, &size);
        return number;
    }

  private:
    HKEY mKey = nullptr;
};

// GetVersionEx tells a program without a manifest that it runs on Windows 8; the kernel's own call does not.
OSVERSIONINFOEXW KernelVersion() {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
    using RtlGetVersion = LONG(WINAPI*)(OSVERSIONINFOEXW*);
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion");
    if (const auto get = reinterpret_cast<RtlGetVersion>(reinterpret_cast<void*>(address))) {
        get(&version);
    }
    return version;
}

bool Is64BitSystem() {
    SYSTEM_INFO info;
    GetNativeSystemInfo(&info);
    return info.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_INTEL &&
           info.wProcessorArchitecture != PROCESSOR_ARCHITECTURE_ARM;
}

}  // namespace

std::wstring LocalComputerName() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name;
    auto size = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &size) ? std::wstring(name.data(), size) : L"";
}

std::wstring OperatingSystemText() {
    const OSVERSIONINFOEXW kernel = KernelVersion();
    const VersionKey key;
    WindowsVersion version;
    version.major = kernel.dwMajorVersion;
    version.minor = kernel.dwMinorVersion;
    version.build = kernel.dwBuildNumber;
    version.revision = key.Number(L"UBR");
    version.isServer = kernel.wProductType != VER_NT_WORKSTATION;
    version.is64Bit = Is64BitSystem();
    version.productName = key.Text(L"ProductName");
    version.displayVersion = key.Text(L"DisplayVersion");
    if (version.displayVersion.empty()) {
        version.displayVersion = key.Text(L"ReleaseId");  // its name before 20H2
    }
    version.servicePack = kernel.szCSDVersion;
    return DescribeWindows(version);
}

}  // namespace v5
