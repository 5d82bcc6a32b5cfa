#include "productinfo/ShellOpen.h"

#include <shellapi.h>

#include "platform/SystemFunction.h"

namespace v5 {

void ShellOpen(HWND owner, const std::wstring& address) {
    SystemFunction<decltype(ShellExecuteW)>(L"shell32.dll", "ShellExecuteW")(owner, L"open", address.c_str(), nullptr,
                                                                             nullptr, SW_SHOWNORMAL);
}

}  // namespace v5
