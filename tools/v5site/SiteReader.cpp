#include "SiteReader.h"

#include <windows.h>

#include "V5Strings.h"
#include "config/SiteFileSearch.h"
#include "platform/Module.h"

namespace v5site {

bool LookingHost::FileExists(const std::wstring& path) const {
    const bool isThere = v5::WindowsSiteHost::FileExists(path);
    mAttempts.push_back({path, isThere});
    return isThere;
}

std::wstring LookingHost::ReadFile(const std::wstring& path, std::wstring& text) const {
    std::wstring reason = v5::WindowsSiteHost::ReadFile(path, text);
    mText = text;
    return reason;
}

std::wstring LookingHost::LibraryFolder() const {
    const std::wstring dll = RegisteredDll(sizeof(void*) * 8);
    return dll.empty() ? v5::ModuleFolder() : v5::ParentFolder(dll);
}

SiteReader::SiteReader(const CommandLine& line, const std::optional<std::wstring>& file)
    : mSite(mHost),
      mIsUsable(mSite.ReadFrom(file ? mHost.FullPath(*file) : L"", v5::AppCategory::NotApplicable, line.noninteractive,
                               line.dotNet, v5::BlankConnections::IgnoreEntry)) {}

bool SiteReader::Choose(const CommandLine& line) {
    return line.dahsID   ? mSite.Choose(*line.dahsID, line.noninteractive, line.dotNet)
           : line.siteID ? mSite.ChooseSite(*line.siteID, line.noninteractive, line.dotNet)
                         : true;
}

std::wstring RegisteredDll(int width) {
    wchar_t id[40] = L"";
    StringFromGUID2(__uuidof(DahsIniMain), id, 40);
    const std::wstring key = std::wstring(L"CLSID\\") + id + L"\\InprocServer32";
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ | (width == 32 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY),
                      &opened) != ERROR_SUCCESS) {
        return {};
    }
    std::wstring path(1024, L'\0');
    auto bytes = static_cast<DWORD>(path.size() * sizeof(wchar_t));
    const LSTATUS status = RegGetValueW(opened, nullptr, nullptr, RRF_RT_REG_SZ, nullptr, path.data(), &bytes);
    RegCloseKey(opened);
    path.resize(status == ERROR_SUCCESS ? bytes / sizeof(wchar_t) - 1 : 0);
    return path;
}

}  // namespace v5site
