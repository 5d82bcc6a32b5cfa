#include "base/Text.h"

#include <gtest/gtest.h>

namespace v5 {

TEST(Text, CaseMappingsCoverTheAlphabetsOfOurSites) {
    EXPECT_EQ(ToUpper(L"az\u00E9\u00FF\u0161\u017E\u03B1\u0444\u0451\u00DF\u00F7"),
              L"AZ\u00C9\u0178\u0160\u017D\u0391\u0424\u0401\u00DF\u00F7");
    EXPECT_EQ(ToLower(L"AZ\u00C9\u0178\u0160\u017D\u0391\u0424\u0401\u00D7"),
              L"az\u00E9\u00FF\u0161\u017E\u03B1\u0444\u0451\u00D7");
    EXPECT_TRUE(EqualsIgnoreCase(L"Stra\u00DFe \u00C9", L"sTRA\u00DFE \u00E9"));
    EXPECT_FALSE(EqualsIgnoreCase(L"ab", L"abc"));
}

TEST(Text, FindIgnoreCaseAtTheEdges) {
    EXPECT_EQ(FindIgnoreCase(L"xxProVIDER=", L"provider"), 2u);
    EXPECT_EQ(FindIgnoreCase(L"provide", L"provider"), std::wstring_view::npos);
    EXPECT_EQ(FindIgnoreCase(L"aXa", L"A", 1), 2u);
    EXPECT_EQ(FindIgnoreCase(L"a", L"a", 5), std::wstring_view::npos);
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
