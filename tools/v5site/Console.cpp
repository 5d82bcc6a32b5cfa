#include "Console.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "base/Utf8.h"

namespace v5site {

namespace {

bool WriteToConsole(HANDLE console, std::wstring_view text) {
    constexpr size_t kAtOnce = 8000;  // characters; the console refuses much more in one call
    while (!text.empty()) {
        const std::wstring_view part = text.substr(0, std::min(text.size(), kAtOnce));
        DWORD written = 0;
        if (!WriteConsoleW(console, part.data(), static_cast<DWORD>(part.size()), &written, nullptr) || written == 0) {
            return false;
        }
        text.remove_prefix(written);
    }
    return true;
}

// To anything but a console.
bool WriteBytes(HANDLE stream, std::string_view utf8) {
    DWORD written = 0;
    return utf8.empty() || (WriteFile(stream, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr) &&
                            written == utf8.size());
}

bool Write(DWORD which, std::wstring_view text) {
    const HANDLE stream = GetStdHandle(which);
    return IsConsole(which) ? WriteToConsole(stream, text) : WriteBytes(stream, v5::ToUtf8(text));
}

}  // namespace

bool IsConsole(unsigned long which) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(which), &mode) != FALSE;
}

bool Print(std::wstring_view text) {
    return Write(STD_OUTPUT_HANDLE, text);
}

bool PrintUtf8(std::string_view text) {
    return IsConsole(STD_OUTPUT_HANDLE) ? Print(v5::FromUtf8(text)) : WriteBytes(GetStdHandle(STD_OUTPUT_HANDLE), text);
}

void PrintError(std::wstring_view text) {
    Write(STD_ERROR_HANDLE, text);
}

}  // namespace v5site
