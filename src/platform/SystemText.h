// The system's words for its errors.
#pragma once

#include <windows.h>

#include <string>

#include "base/AutomationError.h"

namespace v5 {

// The system's text for a Windows error or status code, without the line break at its end; "Automation error
// 0x80041234" for a code that the system has no words for.
std::wstring SystemText(HRESULT status);

// A failed status of the system's as an error to throw, with the system's text for it.
AutomationError SystemError(HRESULT status);

}  // namespace v5
