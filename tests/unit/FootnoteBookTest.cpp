#include "footnotes/FootnoteBook.h"

#include <gtest/gtest.h>

namespace v5 {

TEST(FootnoteBook, HandsOutMarksInOrderOfFirstUse) {
    FootnoteBook book;
    EXPECT_EQ(book.Count(), 0);
    const std::wstring nul(L"a\0b", 3);
    const struct {
        std::wstring text;
        const wchar_t* symbol;
    } rows[] = {
        {L"a", L"\u2020"},      {L"A", L"\u2021"},   {L"a ", L"\u2020\u2020"},
        {L"", L"\u2021\u2021"}, {L" a", L"[5]"},     {L"a", L"\u2020"},
        {nul, L"[6]"},          {L"\u00E9", L"[7]"}, {L"e\u0301", L"[8]"},
        {L"A", L"\u2021"},      {L"x", L"[9]"},      {L"y", L"[10]"},
        {nul, L"[6]"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(book.CreateOrGet(row.text).symbol, row.symbol) << testing::PrintToString(row.text);
    }
    EXPECT_EQ(book.Count(), 10);
    EXPECT_EQ(book.All()[2]->text, L"a ");
    EXPECT_EQ(book.All()[9]->symbol, L"[10]");
}

TEST(FootnoteBook, IsFoundByTheTextItWasAskedFor) {
    FootnoteBook book;
    book.CreateOrGet(L"asked");
    book.All()[0]->text = L"changed";
    book.All()[0]->symbol = L"*";
    EXPECT_EQ(book.CreateOrGet(L"asked").symbol, L"*");
    EXPECT_EQ(book.CreateOrGet(L"changed").symbol, L"\u2021");
}

TEST(FootnoteBook, FootnotesOutliveTheBook) {
    auto book = std::make_unique<FootnoteBook>();
    book->CreateOrGet(L"kept");
    const std::shared_ptr<FootnoteRecord> kept = book->All()[0];
    book.reset();
    EXPECT_EQ(kept->text, L"kept");
}

}  // namespace v5
