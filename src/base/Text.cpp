#include "base/Text.h"

#include <algorithm>

namespace v5 {

namespace {

bool Between(wchar_t c, unsigned first, unsigned last) {
    const auto code = static_cast<unsigned>(c);
    return code >= first && code <= last;
}

wchar_t Shift(wchar_t c, int distance) {
    return static_cast<wchar_t>(static_cast<int>(c) + distance);
}

// Blocks in which capital and small letter alternate. In the first kind the capital has the even code.
bool InEvenCapitalPairs(wchar_t c) {
    return Between(c, 0x100, 0x12F) || Between(c, 0x132, 0x137) || Between(c, 0x14A, 0x177) ||
           Between(c, 0x460, 0x481) || Between(c, 0x48A, 0x4BF) || Between(c, 0x4D0, 0x52F);
}
bool InOddCapitalPairs(wchar_t c) {
    return Between(c, 0x139, 0x148) || Between(c, 0x179, 0x17E);
}

bool IsOdd(wchar_t c) {
    return (static_cast<unsigned>(c) & 1u) != 0;
}

}  // namespace

wchar_t ToUpper(wchar_t c) {
    if (static_cast<unsigned>(c) < 0x80) {
        return c >= L'a' && c <= L'z' ? Shift(c, -32) : c;
    }
    if (c == 0xFF) {
        return 0x178;
    }
    if ((Between(c, 0xE0, 0xFE) && c != 0xF7) || Between(c, 0x3B1, 0x3C1) || Between(c, 0x3C3, 0x3CB) ||
        Between(c, 0x430, 0x44F)) {
        return Shift(c, -32);
    }
    if (Between(c, 0x450, 0x45F)) {
        return Shift(c, -80);
    }
    if ((InEvenCapitalPairs(c) && IsOdd(c)) || (InOddCapitalPairs(c) && !IsOdd(c))) {
        return Shift(c, -1);
    }
    return c;
}

wchar_t ToLower(wchar_t c) {
    if (static_cast<unsigned>(c) < 0x80) {
        return c >= L'A' && c <= L'Z' ? Shift(c, 32) : c;
    }
    if (c == 0x178) {
        return 0xFF;
    }
    if ((Between(c, 0xC0, 0xDE) && c != 0xD7) || Between(c, 0x391, 0x3A1) || Between(c, 0x3A3, 0x3AB) ||
        Between(c, 0x410, 0x42F)) {
        return Shift(c, 32);
    }
    if (Between(c, 0x400, 0x40F)) {
        return Shift(c, 80);
    }
    if ((InEvenCapitalPairs(c) && !IsOdd(c)) || (InOddCapitalPairs(c) && IsOdd(c))) {
        return Shift(c, 1);
    }
    return c;
}

std::wstring ToUpper(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](wchar_t c) { return ToUpper(c); });
    return result;
}

std::wstring ToLower(std::wstring_view text) {
    std::wstring result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](wchar_t c) { return ToLower(c); });
    return result;
}

bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) { return ToUpper(x) == ToUpper(y); });
}

size_t FindIgnoreCase(std::wstring_view text, std::wstring_view what, size_t start) {
    if (start > text.size()) {
        return std::wstring_view::npos;
    }
    const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), what.begin(),
                                   what.end(), [](wchar_t x, wchar_t y) { return ToUpper(x) == ToUpper(y); });
    return found == text.end() && !what.empty() ? std::wstring_view::npos : static_cast<size_t>(found - text.begin());
}

std::wstring_view Trim(std::wstring_view text) {
    const size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) {
        return text.substr(text.size());
    }
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::wstring ReplaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view with) {
    std::wstring result;
    size_t from = 0;
    if (!what.empty()) {
        for (size_t at = text.find(what); at != std::wstring_view::npos; at = text.find(what, from)) {
            result.append(text.substr(from, at - from)).append(with);
            from = at + what.size();
        }
    }
    return result.append(text.substr(from));
}

std::vector<std::wstring> Split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring> pieces;
    size_t from = 0;
    for (size_t at = text.find(separator); at != std::wstring_view::npos; at = text.find(separator, from)) {
        pieces.emplace_back(text.substr(from, at - from));
        from = at + 1;
    }
    pieces.emplace_back(text.substr(from));
    return pieces;
}

std::wstring WithoutTrailingBackslash(std::wstring_view text) {
    return std::wstring(text.ends_with(L'\\') ? text.substr(0, text.size() - 1) : text);
}

}  // namespace v5
