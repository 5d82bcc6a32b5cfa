#include "config/SiteFileSearch.h"

namespace v5 {

namespace {

constexpr std::wstring_view kSiteFileName = L"Vantor5.INI";
constexpr std::wstring_view kSeparators = L"\\/";

bool IsSeparator(wchar_t c) {
    return kSeparators.find(c) != std::wstring_view::npos;
}

// How much of a path its root takes: "C:" and "C:\", also behind "\\?\", or a leading separator.
size_t RootLength(std::wstring_view path) {
    constexpr std::wstring_view kVerbatim = L"\\\\?\\";
    if (path.starts_with(kVerbatim) && path.substr(kVerbatim.size()).find(L':') == 1) {
        return kVerbatim.size() + RootLength(path.substr(kVerbatim.size()));
    }
    if (path.size() >= 2 && path[1] == L':') {
        return path.size() >= 3 && IsSeparator(path[2]) ? 3 : 2;
    }
    return path.starts_with(L"\\\\") ? 2 : !path.empty() && IsSeparator(path[0]) ? 1 : 0;
}

std::wstring StartFolder(const std::wstring& start, const SiteHost& host) {
    if (host.FolderExists(start)) {
        return host.FullPath(start);
    }
    if (host.FileExists(start)) {
        return ParentFolder(host.FullPath(start));
    }
    const std::wstring parent = ParentFolder(start);
    if (!parent.empty() && host.FolderExists(parent)) {
        return host.FullPath(parent);
    }
    return host.LibraryFolder();
}

}  // namespace

std::wstring ParentFolder(std::wstring_view path) {
    const size_t root = RootLength(path);
    const auto dropSeparators = [&] {
        while (path.size() > root && IsSeparator(path.back())) {
            path.remove_suffix(1);
        }
    };
    dropSeparators();
    if (path.size() <= root) {
        return {};
    }
    while (path.size() > root && !IsSeparator(path.back())) {
        path.remove_suffix(1);
    }
    dropSeparators();
    return path == L"\\\\" ? std::wstring() : std::wstring(path);
}

std::wstring JoinPath(std::wstring_view folder, std::wstring_view name) {
    std::wstring path(folder);
    if (!path.empty() && !IsSeparator(path.back()) && path.back() != L':') {
        path += L'\\';
    }
    return path.append(name);
}

std::wstring FindSiteFile(const std::wstring& start, const SiteHost& host) {
    for (std::wstring folder = StartFolder(start, host); !folder.empty(); folder = ParentFolder(folder)) {
        std::wstring path = JoinPath(folder, kSiteFileName);
        if (host.FileExists(path)) {
            return path;
        }
    }
    return {};
}

}  // namespace v5
