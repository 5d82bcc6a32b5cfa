// Examples of each rule; every combination of marks and forms: windows/NumbersOracleTest.cpp.
#include "base/Numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/Text.h"

namespace v5 {

TEST(Numbers, NumericTexts) {
    const std::pair<double, const wchar_t*> cases[] = {
        {1, L"1|\t1 |+1|1,|1$|1\x3000|\x2000 1|1\x200A|\x85 1\xA0|1\x202F|1\x205F|1\x1680|1\x2028"},
        {-1, L"- 1|+-1|1 -|-1+|-$1|($1)|( 1 )|(-1)|&HFFFFFFFF"},
        {0.5, L".5|5e-1|0.50"},
        {1000.5, L"1,000.5|1,0,0,0.5|$1,000.5|1000.50"},
        {2e5, L"2e5|2D+5|2d5|200000."},
        {255, L"&HfF|&O377|-&HFF"},
        {0, L" &h0 |0e999999999999999|1e-400"},
        {65535, L"&HFFFF"},
        {-2147483648.0, L"&H80000000"},
        {4294967296.0, L"&H100000000"},
        {std::numeric_limits<double>::max(), L"1.7976931348623157e308"},
        {123456789012345678901234567890.0, L"123456789012345678901234567890"}};
    for (const auto& [value, texts] : cases) {
        for (const std::wstring& text : Split(texts, L'|')) {
            EXPECT_EQ(ParseNumber(text), value) << std::string(text.begin(), text.end());
            EXPECT_TRUE(IsNumeric(text)) << std::string(text.begin(), text.end());
        }
    }
    EXPECT_EQ(ParseNumber(L"0." + std::wstring(400, L'0') + L"9"), 0);
    EXPECT_EQ(ParseNumber(std::wstring(400, L'9') + L"e-400"), 1.0);
}

TEST(Numbers, TextsThatAreNoNumbers) {
    const std::wstring texts =
        L"| |abc|1a|0x10|1 2|1.2.3|.|,1|,|++1|--1|-1-|+1+|1e|e5|1e+|1e5e5|1e 5|1e5.5|1e400|$|$1$|$1e5|$&HF|(1|1)|((1))|"
        L"()|&H|&HG|&HFF&|& HFF|&17|&O18|&H1.5|1%|True|\x661|\xFF11|1e99999999999999999999|&H10000000000000000";
    for (const std::wstring& text : Split(texts, L'|')) {
        EXPECT_FALSE(IsNumeric(text)) << std::string(text.begin(), text.end());
    }
    EXPECT_FALSE(IsNumeric(std::wstring(L"1\0", 2)));
    EXPECT_FALSE(IsNumeric(std::wstring(400, L'9')));
}

TEST(Numbers, WholeNumbersRoundHalvesToEvenAndKeepTo32Bits) {
    const std::pair<const wchar_t*, std::optional<std::int32_t>> cases[] = {
        {L"2.5", 2},           {L"3.5", 4},
        {L"-2.5", -2},         {L"2147483647.4", INT32_MAX},
        {L"2147483647.5", {}}, {L"-2147483648.5", INT32_MIN},
        {L"-2147483649", {}},  {L"&HFFFFFFFF", -1},
        {L"&H100000000", {}},  {L"True", {}}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(ToLong(text), value) << ParseNumber(text).value_or(0);
    }
}

TEST(Numbers, Booleans) {
    const std::pair<std::optional<bool>, const wchar_t*> cases[] = {
        {true, L"1|-0.1|&HF|tRUE|#True#"}, {false, L"0|(0)|1e-400|FALSE|#false#"}, {std::nullopt, L"|yes| True|1e400"}};
    for (const auto& [value, texts] : cases) {
        for (const std::wstring& text : Split(texts, L'|')) {
            EXPECT_EQ(ToBoolean(text), value) << testing::PrintToString(text);
        }
    }
}

}  // namespace v5
