// Text to the standard streams: as Unicode to a console, as UTF-8 to anything else.
#pragma once

#include <string_view>

namespace v5site {

// Whether all of the text could be written.
bool Print(std::wstring_view text);
bool PrintUtf8(std::string_view text);
void PrintError(std::wstring_view text);

// Whether a standard stream (STD_OUTPUT_HANDLE, STD_ERROR_HANDLE) is a console.
bool IsConsole(unsigned long which);

}  // namespace v5site
