#include "footnotes/FootnoteBook.h"

#include <gtest/gtest.h>

#include <map>

namespace v5 {

TEST(FootnoteBook, NumbersTextsInOrderOfFirstUse) {
    FootnoteBook book;
    EXPECT_EQ(book.Count(), 0);
    const std::wstring nul(L"a\0b", 3);
    const std::pair<std::wstring, const wchar_t*> rows[] = {
        {L"a", L"\u2020"},      {L"A", L"\u2021"},     {L"a ", L"\u2020\u2020"},
        {L"", L"\u2021\u2021"}, {L" a", L"[5]"},       {L"a", L"\u2020"},
        {nul, L"[6]"},          {L"\u00E9", L"[7]"},   {L"e\u0301", L"[8]"},
        {L"A", L"\u2021"},      {L"x", L"[9]"},        {L"y", L"[10]"},
        {nul, L"[6]"},          {L"", L"\u2021\u2021"}};
    for (const auto& [text, mark] : rows) {
        EXPECT_EQ(FootnoteMark(book.NumberOf(text)), mark) << testing::PrintToString(text);
    }
    EXPECT_EQ(book.Count(), 10);
    EXPECT_EQ(book.Text(1), L"a");
    EXPECT_EQ(book.Text(4), L"");
    EXPECT_EQ(book.Text(6), nul);
    EXPECT_EQ(book.Text(10), L"y");
}

// Against an ordered map, far beyond the first table, in an order that mixes new texts with known ones.
TEST(FootnoteBook, AgreesWithAMapWhileItGrows) {
    FootnoteBook book;
    std::map<std::wstring, std::int32_t> map;
    std::uint32_t random = 1;
    for (int i = 0; i < 20'000; ++i) {
        random = random * 1664525 + 1013904223;
        const std::wstring text = std::to_wstring((random >> 8) % 5000);
        const auto next = static_cast<std::int32_t>(map.size()) + 1;
        ASSERT_EQ(book.NumberOf(text), map.emplace(text, next).first->second);
    }
    EXPECT_EQ(book.Count(), static_cast<std::int32_t>(map.size()));
    for (const auto& [text, number] : map) {
        ASSERT_EQ(book.Text(number), text);
    }
}

}  // namespace v5
