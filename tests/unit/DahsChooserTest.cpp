#include "config/DahsChooser.h"

#include <gtest/gtest.h>

namespace v5 {

namespace {

using enum RedundantDasRole;

DahsEntryList Entries(std::initializer_list<DahsEntry> entries) {
    DahsEntryList list;
    for (const DahsEntry& entry : entries) {
        list.Add(entry);
    }
    return list;
}

DahsEntry Entry(int id, RedundantDasRole role, const wchar_t* site, const wchar_t* description = L"",
                const wchar_t* computer = L"near") {
    DahsEntry entry;
    entry.dahsID = id;
    entry.role = role;
    entry.siteID = site;
    entry.description = description;
    entry.computerName = computer;
    return entry;
}

bool IsFar(const DahsEntry& entry) {
    return entry.computerName == L"far";
}

}  // namespace

TEST(DahsChooser, RowsAndFirstChoice) {
    const DahsEntryList entries = Entries({
        Entry(3, Secondary, L"NORTH", L"Stack 1"),
        Entry(5, Primary, L"NORTH", L"Stack 1", L"far"),
        Entry(7, Standalone, L"SOUTH", L"South"),  // says no more than the site itself
        Entry(99, Standalone, L"WEST"),
    });
    const DahsChooser chooser(entries, true, true, IsFar);
    std::wstring rows;
    for (const auto& row : chooser.Rows()) {
        rows += std::to_wstring(row.dahsID) + L" " + row.text + L"\n";
    }
    EXPECT_EQ(rows,
              L"3 NORTH - Stack 1 (secondary - use primary instead)\n5 NORTH - Stack 1 (primary)\n7 SOUTH\n"
              L"99 WEST\n");
    EXPECT_EQ(chooser.FirstChoice(), 1u);
    EXPECT_EQ(chooser.RowOf(99), 3u);
    EXPECT_EQ(chooser.RowOf(4), std::nullopt);
    EXPECT_EQ(DahsChooser(Entries({Entry(1, Secondary, L"N")}), true, true, IsFar).FirstChoice(), std::nullopt);

    const DahsChooser near(entries, false, false, IsFar);
    ASSERT_EQ(near.Rows().size(), 2u);
    EXPECT_EQ(near.Rows()[0].dahsID, 7);
    EXPECT_EQ(near.EmptyListMessage(), L"");  // some were left out, but there is a choice
}

TEST(DahsChooser, WhatAnEmptyListSays) {
    const DahsEntry primary = Entry(1, Primary, L"N", L"", L"far");
    const DahsEntry secondary = Entry(2, Secondary, L"N");
    const DahsEntry farSecondary = Entry(3, Secondary, L"N", L"", L"far");
    const std::pair<DahsEntryList, const wchar_t*> cases[] = {
        {Entries({}), L""},
        {Entries({primary, secondary}),
         L"No DAHS entries are available to choose from. 1 secondary DASes cannot be included in the list. "
         L"1 remote DASes cannot be included in the list."},
        {Entries({farSecondary, secondary}),  // one entry is refused for both reasons
         L"No DAHS entries are available to choose from. 2 secondary DASes cannot be included in the list. "
         L"1 remote DASes cannot be included in the list."},
        {Entries({primary}),
         L"No DAHS entries are available to choose from. 1 remote DASes cannot be included in the list."}};
    for (const auto& [entries, message] : cases) {
        EXPECT_EQ(DahsChooser(entries, false, false, IsFar).EmptyListMessage(), message);
    }
    EXPECT_EQ(DahsChooser().EmptyListMessage(), L"");
}

}  // namespace v5
