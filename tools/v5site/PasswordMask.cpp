#include "PasswordMask.h"

#include <algorithm>
#include <cwctype>

namespace v5site {

namespace {

std::wstring_view Trimmed(std::wstring_view text) {
    const size_t first = std::min(text.find_first_not_of(L" \t"), text.size());
    return text.substr(first, text.find_last_not_of(L" \t") + 1 - first);
}

bool EndsWith(std::wstring_view text, std::wstring_view end) {
    return text.size() >= end.size() &&
           std::equal(end.begin(), end.end(), text.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](wchar_t a, wchar_t b) {
                          return a == static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(b)));
                      });
}

bool IsPasswordName(std::wstring_view name) {
    return EndsWith(Trimmed(name), L"password") || EndsWith(Trimmed(name), L"pwd");
}

// Where the value that starts at `start` ends: at the next semicolon outside quotes or braces.
size_t EndOfValue(std::wstring_view text, size_t start) {
    const size_t first = std::min(text.find_first_not_of(L" \t", start), text.size());
    const wchar_t open = first < text.size() ? text[first] : L'\0';
    if (open != L'"' && open != L'\'' && open != L'{') {
        return std::min(text.find(L';', start), text.size());
    }
    const wchar_t close = open == L'{' ? L'}' : open;
    size_t end = text.find(close, first + 1);
    while (end != std::wstring_view::npos && end + 1 < text.size() && text[end + 1] == close) {
        end = text.find(close, end + 2);  // a doubled quote stands for itself
    }
    return end == std::wstring_view::npos ? text.size() : std::min(text.find(L';', end), text.size());
}

}  // namespace

std::wstring MaskPasswords(std::wstring_view connection) {
    std::wstring masked;
    size_t at = 0;
    while (at < connection.size()) {
        const size_t equals = connection.find(L'=', at);
        const size_t semicolon = connection.find(L';', at);
        if (equals == std::wstring_view::npos || semicolon < equals) {  // a setting without a value
            const size_t next = std::min(semicolon, connection.size() - 1) + 1;
            masked += connection.substr(at, next - at);
            at = next;
            continue;
        }
        const size_t end = EndOfValue(connection, equals + 1);
        masked += connection.substr(at, equals + 1 - at);
        masked += IsPasswordName(connection.substr(at, equals - at)) ? L"***"
                                                                     : connection.substr(equals + 1, end - equals - 1);
        masked += connection.substr(end, 1);
        at = end + 1;
    }
    return masked;
}

}  // namespace v5site
