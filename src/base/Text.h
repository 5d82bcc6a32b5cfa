// Text as the rules handle it: UTF-16 or UTF-32 code units in std::wstring, never a BSTR.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace v5 {

// Upper-cases or lower-cases one UTF-16 unit as the platform's LCMapString does for the invariant locale: letters whose
// simple mappings in Unicode lead there and back, whatever the alphabet. Every other unit stays as it is: one whose
// mapping would change the length ("ß"), one that shares its capital with another ("ς", "µ"), and surrogates.
wchar_t ToUpper(wchar_t c);
wchar_t ToLower(wchar_t c);
std::wstring ToUpper(std::wstring_view text);
std::wstring ToLower(std::wstring_view text);

// Whether two texts are equal when case is ignored.
bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b);

// The position of the first `what` in `text`, from `start` on, case ignored; npos when there is none.
size_t FindIgnoreCase(std::wstring_view text, std::wstring_view what, size_t start = 0);

// `text` without leading and trailing blanks (U+0020 only: tabs and line breaks stay, as automation clients' Trim
// has it). The view points into the caller's text.
std::wstring_view Trim(std::wstring_view text);

// `text` with every `what` replaced by `with`, left to right, case-sensitive. An empty `what` replaces nothing.
std::wstring ReplaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view with);

// The pieces of `text` between separators. An empty text gives one empty piece.
std::vector<std::wstring> Split(std::wstring_view text, wchar_t separator);

// `digits` with as many zeros before them as make `width` characters; longer ones as they are.
std::wstring ZeroPadded(std::wstring digits, size_t width);
inline std::wstring ZeroPadded(int number, size_t width) {
    return ZeroPadded(std::to_wstring(number), width);
}

// `text` without one trailing backslash, if it has one: the form in which folder paths are kept.
std::wstring WithoutTrailingBackslash(std::wstring_view text);

}  // namespace v5
