#include "base/Numbers.h"

#include <gtest/gtest.h>

#include <string>

namespace v5 {

TEST(Numbers, NumericTexts) {
    struct Case {
        const wchar_t* text;
        double value;
    };
    const Case cases[] = {
        {L"1", 1},
        {L"\t1 ", 1},
        {L"+1", 1},
        {L"- 1", -1},
        {L"+-1", -1},
        {L"1 -", -1},
        {L"-1+", -1},
        {L"1.5", 1.5},
        {L".5", 0.5},
        {L"5.", 5},
        {L"1,000", 1000},
        {L"1,2,3", 123},
        {L"1,", 1},
        {L"1e5", 1e5},
        {L"1E-5", 1e-5},
        {L"1d5", 1e5},
        {L"2D+2", 200},
        {L"$1,000.5", 1000.5},
        {L"-$1", -1},
        {L"1$", 1},
        {L"($1)", -1},
        {L"( 1 )", -1},
        {L"(-1)", -1},
        {L"&HfF", 255},
        {L"&HFFFF", 65535},
        {L"&O17", 15},
        {L"-&HFF", 255},
        {L" &h0 ", 0},
        {L"0e999999999999999", 0},
        {L"&HFFFFFFFF", -1},
        {L"&H80000000", -2147483648.0},
        {L"&H100000000", 4294967296.0},
        {L"1e-400", 0},
        {L"1.7976931348623157e308", 1.7976931348623157e308},
        {L"1\x3000", 1},
        {L"123456789012345678901234567890", 123456789012345678901234567890.0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ParseNumber(c.text), c.value) << std::wstring(c.text).size() << " characters, value " << c.value;
        EXPECT_TRUE(IsNumeric(c.text)) << c.value;
    }
}

TEST(Numbers, TextsThatAreNoNumbers) {
    for (const std::wstring text : {L"",       L" ",
                                    L"abc",    L"1a",
                                    L"0x10",   L"1 2",
                                    L"1.2.3",  L".",
                                    L",1",     L",",
                                    L"++1",    L"--1",
                                    L"-1-",    L"+1+",
                                    L"1e",     L"e5",
                                    L"1e+",    L"1e5e5",
                                    L"1e 5",   L"1e5.5",
                                    L"1e400",  L"1e99999999999999999999",
                                    L"$",      L"$1$",
                                    L"$1e5",   L"$&HF",
                                    L"(1",     L"1)",
                                    L"((1))",  L"()",
                                    L"&H",     L"&HG",
                                    L"&HFF&",  L"& HFF",
                                    L"&17",    L"&O18",
                                    L"&H1.5",  L"&H10000000000000000",
                                    L"1%",     L"\x661",
                                    L"\xFF11", L"True"}) {
        EXPECT_FALSE(IsNumeric(text)) << std::string(text.begin(), text.end());
    }
    EXPECT_FALSE(IsNumeric(std::wstring(L"1\0", 2)));
    EXPECT_FALSE(IsNumeric(std::wstring(400, L'9')));
    EXPECT_EQ(ParseNumber(L"0." + std::wstring(400, L'0') + L"9"), 0);
    EXPECT_EQ(ParseNumber(std::wstring(400, L'9') + L"e-400"), 1.0);
}

TEST(Numbers, WholeNumbersRoundHalvesToEvenAndKeepTo32Bits) {
    EXPECT_EQ(ToLong(L"2.5"), 2);
    EXPECT_EQ(ToLong(L"3.5"), 4);
    EXPECT_EQ(ToLong(L"-2.5"), -2);
    EXPECT_EQ(ToLong(L"2147483647.4"), 2147483647);
    EXPECT_EQ(ToLong(L"2147483647.5"), std::nullopt);
    EXPECT_EQ(ToLong(L"-2147483648.5"), -2147483647 - 1);
    EXPECT_EQ(ToLong(L"-2147483649"), std::nullopt);
    EXPECT_EQ(ToLong(L"&HFFFFFFFF"), -1);
    EXPECT_EQ(ToLong(L"&H100000000"), std::nullopt);
    EXPECT_EQ(ToLong(L"True"), std::nullopt);
}

TEST(Numbers, Booleans) {
    for (const wchar_t* text : {L"1", L"-0.1", L"&HF", L"tRUE", L"#True#"}) {
        EXPECT_EQ(ToBoolean(text), true);
    }
    for (const wchar_t* text : {L"0", L"(0)", L"1e-400", L"FALSE", L"#false#"}) {
        EXPECT_EQ(ToBoolean(text), false);
    }
    for (const wchar_t* text : {L"", L"yes", L" True", L"1e400"}) {
        EXPECT_EQ(ToBoolean(text), std::nullopt);
    }
}

}  // namespace v5
