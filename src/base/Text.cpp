#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace v5 {

namespace {

// Capital letters whose small letters lie at one distance. Where that is 1, capital and small letters take turns.
struct CaseRange {
    std::int32_t firstCapital;
    std::int32_t count;
    std::int32_t toSmall;

    constexpr std::int32_t Step() const { return toSmall == 1 ? 2 : 1; }
    constexpr std::int32_t LastCapital() const { return firstCapital + (count - 1) * Step(); }
    constexpr bool HasCapital(std::int32_t code) const {
        return code >= firstCapital && code <= LastCapital() && (code - firstCapital) % Step() == 0;
    }
};

// The pairs of the Unicode Character Database's simple case mappings (UnicodeData.txt) that lead there and back, up to
// U+FFFF: what LCMapString maps for the invariant locale. In the order of the capitals.
constexpr CaseRange kCapitals[] = {
    {0x41, 26, 32},      {0xC0, 23, 32},      {0xD8, 7, 32},       {0x100, 24, 1},      {0x132, 3, 1},
    {0x139, 8, 1},       {0x14A, 23, 1},      {0x178, 1, -121},    {0x179, 3, 1},       {0x181, 1, 210},
    {0x182, 2, 1},       {0x186, 1, 206},     {0x187, 1, 1},       {0x189, 2, 205},     {0x18B, 1, 1},
    {0x18E, 1, 79},      {0x18F, 1, 202},     {0x190, 1, 203},     {0x191, 1, 1},       {0x193, 1, 205},
    {0x194, 1, 207},     {0x196, 1, 211},     {0x197, 1, 209},     {0x198, 1, 1},       {0x19C, 1, 211},
    {0x19D, 1, 213},     {0x19F, 1, 214},     {0x1A0, 3, 1},       {0x1A6, 1, 218},     {0x1A7, 1, 1},
    {0x1A9, 1, 218},     {0x1AC, 1, 1},       {0x1AE, 1, 218},     {0x1AF, 1, 1},       {0x1B1, 2, 217},
    {0x1B3, 2, 1},       {0x1B7, 1, 219},     {0x1B8, 1, 1},       {0x1BC, 1, 1},       {0x1C4, 1, 2},
    {0x1C7, 1, 2},       {0x1CA, 1, 2},       {0x1CD, 8, 1},       {0x1DE, 9, 1},       {0x1F1, 1, 2},
    {0x1F4, 1, 1},       {0x1F6, 1, -97},     {0x1F7, 1, -56},     {0x1F8, 20, 1},      {0x220, 1, -130},
    {0x222, 9, 1},       {0x23A, 1, 10795},   {0x23B, 1, 1},       {0x23D, 1, -163},    {0x23E, 1, 10792},
    {0x241, 1, 1},       {0x243, 1, -195},    {0x244, 1, 69},      {0x245, 1, 71},      {0x246, 5, 1},
    {0x370, 2, 1},       {0x376, 1, 1},       {0x37F, 1, 116},     {0x386, 1, 38},      {0x388, 3, 37},
    {0x38C, 1, 64},      {0x38E, 2, 63},      {0x391, 17, 32},     {0x3A3, 9, 32},      {0x3CF, 1, 8},
    {0x3D8, 12, 1},      {0x3F7, 1, 1},       {0x3F9, 1, -7},      {0x3FA, 1, 1},       {0x3FD, 3, -130},
    {0x400, 16, 80},     {0x410, 32, 32},     {0x460, 17, 1},      {0x48A, 27, 1},      {0x4C0, 1, 15},
    {0x4C1, 7, 1},       {0x4D0, 48, 1},      {0x531, 38, 48},     {0x10A0, 38, 7264},  {0x10C7, 1, 7264},
    {0x10CD, 1, 7264},   {0x13A0, 80, 38864}, {0x13F0, 6, 8},      {0x1C90, 43, -3008}, {0x1CBD, 3, -3008},
    {0x1E00, 75, 1},     {0x1EA0, 48, 1},     {0x1F08, 8, -8},     {0x1F18, 6, -8},     {0x1F28, 8, -8},
    {0x1F38, 8, -8},     {0x1F48, 6, -8},     {0x1F59, 1, -8},     {0x1F5B, 1, -8},     {0x1F5D, 1, -8},
    {0x1F5F, 1, -8},     {0x1F68, 8, -8},     {0x1F88, 8, -8},     {0x1F98, 8, -8},     {0x1FA8, 8, -8},
    {0x1FB8, 2, -8},     {0x1FBA, 2, -74},    {0x1FBC, 1, -9},     {0x1FC8, 4, -86},    {0x1FCC, 1, -9},
    {0x1FD8, 2, -8},     {0x1FDA, 2, -100},   {0x1FE8, 2, -8},     {0x1FEA, 2, -112},   {0x1FEC, 1, -7},
    {0x1FF8, 2, -128},   {0x1FFA, 2, -126},   {0x1FFC, 1, -9},     {0x2132, 1, 28},     {0x2160, 16, 16},
    {0x2183, 1, 1},      {0x24B6, 26, 26},    {0x2C00, 48, 48},    {0x2C60, 1, 1},      {0x2C62, 1, -10743},
    {0x2C63, 1, -3814},  {0x2C64, 1, -10727}, {0x2C67, 3, 1},      {0x2C6D, 1, -10780}, {0x2C6E, 1, -10749},
    {0x2C6F, 1, -10783}, {0x2C70, 1, -10782}, {0x2C72, 1, 1},      {0x2C75, 1, 1},      {0x2C7E, 2, -10815},
    {0x2C80, 50, 1},     {0x2CEB, 2, 1},      {0x2CF2, 1, 1},      {0xA640, 23, 1},     {0xA680, 14, 1},
    {0xA722, 7, 1},      {0xA732, 31, 1},     {0xA779, 2, 1},      {0xA77D, 1, -35332}, {0xA77E, 5, 1},
    {0xA78B, 1, 1},      {0xA78D, 1, -42280}, {0xA790, 2, 1},      {0xA796, 10, 1},     {0xA7AA, 1, -42308},
    {0xA7AB, 1, -42319}, {0xA7AC, 1, -42315}, {0xA7AD, 1, -42305}, {0xA7AE, 1, -42308}, {0xA7B0, 1, -42258},
    {0xA7B1, 1, -42282}, {0xA7B2, 1, -42261}, {0xA7B3, 1, 928},    {0xA7B4, 8, 1},      {0xA7C4, 1, -48},
    {0xA7C5, 1, -42307}, {0xA7C6, 1, -35384}, {0xA7C7, 2, 1},      {0xA7D0, 1, 1},      {0xA7D6, 2, 1},
    {0xA7F5, 1, 1},      {0xFF21, 26, 32}};

// The same in the order of the small letters.
constexpr auto kSmall = [] {
    std::array<CaseRange, std::size(kCapitals)> ranges{};
    std::copy(std::begin(kCapitals), std::end(kCapitals), ranges.begin());
    std::sort(ranges.begin(), ranges.end(), [](const CaseRange& a, const CaseRange& b) {
        return a.firstCapital + a.toSmall < b.firstCapital + b.toSmall;
    });
    return ranges;
}();

bool IsAscii(wchar_t c) {
    return static_cast<std::uint32_t>(c) < 0x80;
}

}  // namespace

wchar_t ToUpper(wchar_t c) {
    if (IsAscii(c)) {
        return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    }
    const auto code = static_cast<std::int32_t>(c);
    const auto* const range = std::partition_point(
        kSmall.begin(), kSmall.end(), [&](const CaseRange& each) { return each.LastCapital() + each.toSmall < code; });
    const bool isSmall = range != kSmall.end() && range->HasCapital(code - range->toSmall);
    return isSmall ? static_cast<wchar_t>(code - range->toSmall) : c;
}

wchar_t ToLower(wchar_t c) {
    if (IsAscii(c)) {
        return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
    }
    const auto code = static_cast<std::int32_t>(c);
    const auto* const range = std::partition_point(std::begin(kCapitals), std::end(kCapitals),
                                                   [&](const CaseRange& each) { return each.LastCapital() < code; });
    const bool isCapital = range != std::end(kCapitals) && range->HasCapital(code);
    return isCapital ? static_cast<wchar_t>(code + range->toSmall) : c;
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

std::wstring ZeroPadded(std::wstring digits, size_t width) {
    return digits.insert(0, width - std::min(width, digits.size()), L'0');
}

std::wstring WithoutTrailingBackslash(std::wstring_view text) {
    return std::wstring(text.ends_with(L'\\') ? text.substr(0, text.size() - 1) : text);
}

}  // namespace v5
