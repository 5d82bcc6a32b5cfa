#include "productinfo/HtmlHelpViewer.h"

#include "platform/AnsiCodePage.h"
#include "platform/FileSystem.h"
#include "platform/SystemFunction.h"

namespace v5 {
namespace {

using HtmlHelpFunction = HWND WINAPI(HWND owner, LPCSTR file, UINT command, DWORD_PTR data);

constexpr UINT kDisplayTopic = 0;  // HH_DISPLAY_TOPIC without a topic: the file's default one

}  // namespace

bool HtmlHelpViewer::FileExists(std::wstring_view path) const {
    return v5::FileExists(std::wstring(path));
}

void HtmlHelpViewer::Open(std::wstring_view path) {
    SystemFunction<HtmlHelpFunction>(L"hhctrl.ocx", "HtmlHelpA")(mOwner, ToAnsi(path).c_str(), kDisplayTopic, 0);
}

}  // namespace v5
