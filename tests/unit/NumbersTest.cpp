// Examples of each rule; every combination of marks and forms: windows/NumbersOracleTest.cpp.
#include "base/Numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace v5 {

TEST(Numbers, NumericTexts) {
    const struct {
        double value;
        std::vector<const wchar_t*> texts;
    } cases[] = {{1, {L"1", L"\t1 ", L"+1", L"1,", L"1$", L"1\x3000"}},
                 {-1, {L"- 1", L"+-1", L"1 -", L"-1+", L"-$1", L"($1)", L"( 1 )", L"(-1)", L"&HFFFFFFFF"}},
                 {0.5, {L".5", L"5e-1", L"0.50"}},
                 {5, {L"5.", L"&o5"}},
                 {1000.5, {L"1,000.5", L"1,0,0,0.5", L"$1,000.5"}},
                 {2e5, {L"2e5", L"2D+5", L"2d5"}},
                 {255, {L"&HfF", L"&O377", L"-&HFF"}},
                 {0, {L" &h0 ", L"0e999999999999999", L"1e-400"}},
                 {65535, {L"&HFFFF"}},
                 {-2147483648.0, {L"&H80000000"}},
                 {4294967296.0, {L"&H100000000"}},
                 {std::numeric_limits<double>::max(), {L"1.7976931348623157e308"}},
                 {123456789012345678901234567890.0, {L"123456789012345678901234567890"}}};
    for (const auto& [value, texts] : cases) {
        for (const std::wstring text : texts) {
            EXPECT_EQ(ParseNumber(text), value) << std::string(text.begin(), text.end());
            EXPECT_TRUE(IsNumeric(text)) << std::string(text.begin(), text.end());
        }
    }
    EXPECT_EQ(ParseNumber(L"0." + std::wstring(400, L'0') + L"9"), 0);
    EXPECT_EQ(ParseNumber(std::wstring(400, L'9') + L"e-400"), 1.0);
}

TEST(Numbers, TextsThatAreNoNumbers) {
    for (const std::wstring text : {L"",
                                    L" ",
                                    L"abc",
                                    L"1a",
                                    L"0x10",
                                    L"1 2",
                                    L"1.2.3",
                                    L".",
                                    L",1",
                                    L",",
                                    L"++1",
                                    L"--1",
                                    L"-1-",
                                    L"+1+",
                                    L"1e",
                                    L"e5",
                                    L"1e+",
                                    L"1e5e5",
                                    L"1e 5",
                                    L"1e5.5",
                                    L"1e400",
                                    L"$",
                                    L"$1$",
                                    L"$1e5",
                                    L"$&HF",
                                    L"(1",
                                    L"1)",
                                    L"((1))",
                                    L"()",
                                    L"&H",
                                    L"&HG",
                                    L"&HFF&",
                                    L"& HFF",
                                    L"&17",
                                    L"&O18",
                                    L"&H1.5",
                                    L"1%",
                                    L"True",
                                    L"\x661",
                                    L"\xFF11",
                                    L"1e99999999999999999999",
                                    L"&H10000000000000000"}) {
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
    const std::pair<std::optional<bool>, std::vector<const wchar_t*>> cases[] = {
        {true, {L"1", L"-0.1", L"&HF", L"tRUE", L"#True#"}},
        {false, {L"0", L"(0)", L"1e-400", L"FALSE", L"#false#"}},
        {std::nullopt, {L"", L"yes", L" True", L"1e400"}}};
    for (const auto& [value, texts] : cases) {
        for (const wchar_t* text : texts) {
            EXPECT_EQ(ToBoolean(text), value) << testing::PrintToString(text);
        }
    }
}

}  // namespace v5
