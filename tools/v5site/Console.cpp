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

bool WriteAsUtf8(HANDLE stream, std::wstring_view text) {
    const auto size = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');  // the most that one UTF-16 unit can take
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(), static_cast<int>(bytes.size()),
                                           nullptr, nullptr);
    DWORD written = 0;
    return text.empty() || (WriteFile(stream, bytes.data(), static_cast<DWORD>(length), &written, nullptr) &&
                            written == static_cast<DWORD>(length));
}

bool Write(DWORD which, std::wstring_view text) {
    const HANDLE stream = GetStdHandle(which);
    DWORD mode = 0;
    return GetConsoleMode(stream, &mode) ? WriteToConsole(stream, text) : WriteAsUtf8(stream, text);
}

}  // namespace

bool Print(std::wstring_view text) {
    return Write(STD_OUTPUT_HANDLE, text);
}

bool PrintUtf8(std::string_view text) {
    const HANDLE stream = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0, written = 0;
    return GetConsoleMode(stream, &mode)
               ? WriteToConsole(stream, v5::FromUtf8(text))
               : WriteFile(stream, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
                     written == text.size();
}

void PrintError(std::wstring_view text) {
    Write(STD_ERROR_HANDLE, text);
}

}  // namespace v5site
