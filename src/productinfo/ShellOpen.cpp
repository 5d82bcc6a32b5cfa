#include "productinfo/ShellOpen.h"

#include <shellapi.h>

namespace v5 {

void ShellOpen(HWND owner, const std::wstring& address) {
    ShellExecuteW(owner, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace v5
