#include "footnotes/FootnoteBook.h"

#include <gtest/gtest.h>

#include <map>

namespace v5 {

TEST(FootnoteBook, Marks) {
    const wchar_t* marks[] = {L"\u2020", L"\u2021", L"\u2020\u2020", L"\u2021\u2021", L"[5]", L"[6]"};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(FootnoteMark(i + 1), marks[i]);
    }
    EXPECT_EQ(FootnoteMark(1234), L"[1234]");
}

// Against an ordered map, far beyond the first table, in an order that mixes new texts with known ones.
TEST(FootnoteBook, AgreesWithAMapWhileItGrows) {
    FootnoteBook book;
    std::map<std::wstring, std::int32_t> map;
    const std::wstring alike[] = {L"a", L"A", L"a ", L"", L" a", {L'a', 0, L'b'}, L"\u00E9", L"e\u0301"};
    std::uint32_t random = 1;
    for (int i = 0; i < 20'000; ++i) {
        random = random * 1664525 + 1013904223;
        const std::uint32_t choice = (random >> 8) % 5000;
        const std::wstring text = choice < std::size(alike) ? alike[choice] : std::to_wstring(choice);
        const auto next = static_cast<std::int32_t>(map.size()) + 1;
        ASSERT_EQ(book.NumberOf(text), map.emplace(text, next).first->second);
    }
    EXPECT_EQ(book.Count(), static_cast<std::int32_t>(map.size()));
    for (const auto& [text, number] : map) {
        ASSERT_EQ(book.Text(number), text);
    }
}

}  // namespace v5
