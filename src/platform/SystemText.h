// The system's words for its errors.
#pragma once

#include <windows.h>

#include <string>

namespace v5 {

// The system's text for a Windows error or status code, without the line break at its end; "Automation error
// 0x80041234" for a code that the system has no words for.
std::wstring SystemText(HRESULT status);

}  // namespace v5
