#include "productinfo/HtmlHelpViewer.h"

#include <iterator>

#include "platform/AnsiCodePage.h"
#include "platform/SystemText.h"

namespace v5 {
namespace {

using HtmlHelpFunction = HWND(WINAPI*)(HWND owner, LPCSTR file, UINT command, DWORD_PTR data);

constexpr UINT kDisplayTopic = 0;  // HH_DISPLAY_TOPIC without a topic: the file's default one

// The viewer of the system folder, never one beside the program. It stays loaded, since its windows outlive the call.
HtmlHelpFunction LoadHtmlHelp() {
    wchar_t folder[MAX_PATH];
    const UINT length = GetSystemDirectoryW(folder, static_cast<UINT>(std::size(folder)));
    const std::wstring path = std::wstring(folder, length) + L"\\hhctrl.ocx";
    const HMODULE library = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    const FARPROC function = library ? GetProcAddress(library, "HtmlHelpA") : nullptr;
    if (!function) {
        throw SystemError(HRESULT_FROM_WIN32(GetLastError()));
    }
    return reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(function));
}

}  // namespace

bool HtmlHelpViewer::FileExists(std::wstring_view path) const {
    const DWORD attributes = GetFileAttributesW(std::wstring(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

void HtmlHelpViewer::Open(std::wstring_view path) {
    static const HtmlHelpFunction htmlHelp = LoadHtmlHelp();
    htmlHelp(mOwner, ToAnsi(path).c_str(), kDisplayTopic, 0);
}

}  // namespace v5
