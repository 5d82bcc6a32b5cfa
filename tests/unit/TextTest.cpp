#include "base/Text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwctype>

namespace v5 {

// Beside the C library's own table, where it has one, and on the platform beside the platform's (TextOracleTest).
TEST(Text, CaseMappingsLeadThereAndBack) {
    int pairs = 0;
    const bool isTold = std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr;
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        const auto c = static_cast<wchar_t>(code);
        EXPECT_EQ(ToLower(ToUpper(c)), ToLower(c)) << code;
        EXPECT_EQ(ToUpper(ToLower(c)), ToUpper(c)) << code;
        if (ToLower(c) != c) {
            ++pairs;
            const auto capital = static_cast<wint_t>(c), small = static_cast<wint_t>(ToLower(c));
            EXPECT_TRUE(!isTold || (std::towlower(capital) == small && std::towupper(small) == capital)) << code;
        }
    }
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(pairs, 1163);  // in the platform's table
    EXPECT_TRUE(EqualsIgnoreCase(L"Stra\u00DFe \u00C9", L"sTRA\u00DFE \u00E9"));
    EXPECT_FALSE(EqualsIgnoreCase(L"ab", L"abc"));
}

TEST(Text, FindIgnoreCaseAtTheEdges) {
    EXPECT_EQ(FindIgnoreCase(L"xxProVIDER=", L"provider"), 2u);
    EXPECT_EQ(FindIgnoreCase(L"provide", L"provider"), std::wstring_view::npos);
    EXPECT_EQ(FindIgnoreCase(L"aXa", L"A", 1), 2u);
    EXPECT_EQ(FindIgnoreCase(L"a", L"a", 5), std::wstring_view::npos);
    EXPECT_EQ(FindIgnoreCase(L"a", L"", 1), 1u);
}

TEST(Text, TrimDropsBlanksOnly) {
    EXPECT_EQ(Trim(L"  a b  "), L"a b");
    EXPECT_EQ(Trim(L"\ta "), L"\ta");
    EXPECT_EQ(Trim(L"   "), L"");
}

TEST(Text, ReplaceSplitAndBackslash) {
    EXPECT_EQ(ReplaceAll(L"aaa", L"aa", L"b"), L"ba");
    EXPECT_EQ(ReplaceAll(L"$x$", L"$x$", L"$x$$x$"), L"$x$$x$");
    EXPECT_EQ(ReplaceAll(L"abc", L"", L"x"), L"abc");
    EXPECT_EQ(Split(L"", L','), (std::vector<std::wstring>{L""}));
    EXPECT_EQ(Split(L",a,,", L','), (std::vector<std::wstring>{L"", L"a", L"", L""}));
    EXPECT_EQ(WithoutTrailingBackslash(L"D:\\\\"), L"D:\\");
    EXPECT_EQ(WithoutTrailingBackslash(L""), L"");
}

}  // namespace v5
