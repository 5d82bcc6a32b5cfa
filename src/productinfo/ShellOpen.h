// The system's registered handlers for addresses.
#pragma once

#include <windows.h>

#include <string>

namespace v5 {

// Opens an address ("mailto:…") with its registered handler, in a normal window. A failure is passed over.
void ShellOpen(HWND owner, const std::wstring& address);

}  // namespace v5
