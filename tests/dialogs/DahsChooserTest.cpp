#include <windows.h>

#include <commctrl.h>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"
#include "dialogs/ControlIds.h"

namespace v5::test {

namespace {

constexpr wchar_t kTitle[] = L"Choose DAHS";

struct List {
    HWND window;

    explicit List(const Dialog& dialog) : window(dialog.Control(ids::lsvDahsList)) {}

    int Count() const { return static_cast<int>(SendMessageW(window, LVM_GETITEMCOUNT, 0, 0)); }
    int Selected() const {
        return static_cast<int>(SendMessageW(window, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    std::wstring Row(int row) const {
        wchar_t text[200] = L"";
        LVITEMW item{};
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        SendMessageW(window, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text;
    }
    RECT Place(int row) const {
        RECT place{LVIR_LABEL, 0, 0, 0};
        SendMessageW(window, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        return place;
    }
    // Whether a row's text shows a colour.
    bool Shows(int row, COLORREF colour) const {
        const RECT place = Place(row);
        const HDC dc = GetDC(window);
        bool found = false;
        for (LONG y = place.top; y < place.bottom && !found; ++y) {
            for (LONG x = place.left; x < place.right && !found; ++x) {
                found = GetPixel(dc, x, y) == colour;
            }
        }
        ReleaseDC(window, dc);
        return found;
    }
};

DahsAnswer Ask(long initial, const std::function<void(const Dialog&)>& work) {
    DahsAnswer answer;
    ModalCall call([&] { answer = GetDahsIdFromUser(initial); });
    work(Dialog(kTitle));
    call.Wait();
    return answer;
}

const std::vector<Das> kPair = {{3, "NORTH", "Secondary"}, {5, "NORTH", "Primary"}, {9, "SOUTH", "Standalone", true}};

// The chooser's message boxes have its title, but a prompt instead of a list.
std::wstring DismissMessage() {
    const Dialog message(kTitle);
    std::wstring text = message.Text(ids::lblPrompt);
    for (size_t at = text.find(L"\r\n"); at != std::wstring::npos; at = text.find(L"\r\n")) {
        text.replace(at, 2, L" ");  // where the lines break depends on the font
    }
    message.Key(VK_RETURN);
    EXPECT_EVENTUALLY(!IsWindow(message.Window()));
    return text;
}

}  // namespace

TEST(DahsChooserDialog, RowsSelectionAndGrey) {
    const SiteFolder site(SiteFile(kPair));
    const DahsAnswer answer = Ask(0, [](const Dialog& dialog) {
        const List list(dialog);
        ASSERT_EQ(list.Count(), 3);
        EXPECT_EQ(list.Row(0), L"NORTH - Stack 3 (secondary - use primary instead)");
        EXPECT_EQ(list.Row(1), L"NORTH - Stack 5 (primary)");
        EXPECT_EQ(list.Row(2), L"SOUTH - Stack 9");
        EXPECT_EQ(list.Selected(), 1);
        EXPECT_EQ(dialog.FocusId(), ids::lsvDahsList);
        EXPECT_EVENTUALLY(list.Shows(0, RGB(192, 192, 192)));
        EXPECT_FALSE(list.Shows(2, RGB(192, 192, 192)));
        dialog.Key(VK_RETURN);
    });
    EXPECT_TRUE(answer.chosen);
    EXPECT_EQ(answer.dahsID, 5);
}

static std::function<void(const Dialog&)> Typing(const std::vector<WORD>& keys) {
    return [keys](const Dialog& dialog) { dialog.Keys(keys); };
}

TEST(DahsChooserDialog, WaysToChoose) {
    const SiteFolder site(SiteFile(kPair));
    const struct {
        long initial;
        std::function<void(const Dialog&)> work;
        bool chosen;
        long dahsID;
    } cases[] = {
        {9, [](const Dialog& dialog) { dialog.Key(VK_RETURN); }, false, 9},  // the initial entry again
        {77, [](const Dialog& dialog) { dialog.Key(VK_RETURN); }, true, 5},  // an entry that is not offered
        {9, Typing({VK_UP, VK_UP, VK_RETURN}), true, 3},                     // a grey row counts too
        {5, Typing({'S', VK_RETURN}), true, 9},                              // type-ahead
        {9, [](const Dialog& dialog) { dialog.Click(List(dialog).window, List(dialog).Place(1), 2); }, true, 5},
        {5, Typing({VK_DOWN, VK_ESCAPE}), false, 5},
        {5, [](const Dialog& dialog) { dialog.Click(IDCANCEL); }, false, 5},
        {5, [](const Dialog& dialog) { PostMessageW(dialog.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }, false, 5},
    };
    for (const auto& each : cases) {
        const DahsAnswer answer = Ask(each.initial, each.work);
        EXPECT_EQ(answer.chosen, each.chosen) << each.initial;
        EXPECT_EQ(answer.dahsID, each.dahsID) << each.initial;
    }
}

TEST(DahsChooserDialog, AsksForAChoice) {
    const SiteFolder site(SiteFile({{4, "NORTH", "Secondary"}}));
    const DahsAnswer answer = Ask(0, [](const Dialog& dialog) {
        const List list(dialog);
        EXPECT_EQ(list.Selected(), -1);  // all rows are grey
        dialog.Key(VK_RETURN);
        EXPECT_EVENTUALLY(!IsWindowEnabled(dialog.Window()));
        HWND message = nullptr;
        ASSERT_EVENTUALLY((message = FindWindowExW(nullptr, nullptr, nullptr, kTitle)) != nullptr &&
                          GetWindow(message, GW_OWNER) == dialog.Window());
        EXPECT_EVENTUALLY(TextOf(GetDlgItem(message, ids::lblPrompt)) == L"Please choose a DAHS.");
        PostMessageW(message, WM_COMMAND, IDOK, 0);
        EXPECT_EVENTUALLY(IsWindowEnabled(dialog.Window()));
        EXPECT_EVENTUALLY(dialog.FocusId() == ids::lsvDahsList);
        dialog.Click(list.window, list.Place(0));
        EXPECT_EVENTUALLY(list.Selected() == 0);
        dialog.Click(IDOK);
    });
    EXPECT_TRUE(answer.chosen);
    EXPECT_EQ(answer.dahsID, 4);
}

TEST(DahsChooserDialog, SaysWhyTheListIsEmpty) {
    const SiteFolder site(SiteFile({{3, "NORTH", "Secondary"}, {5, "NORTH", "Primary", true}}));
    DahsAnswer answer;
    ModalCall call([&] { answer = GetDahsIdFromUser(7, false, false); });
    EXPECT_EQ(DismissMessage(),
              L"No DAHS entries are available to choose from. 1 secondary DASes cannot be included in the "
              L"list. 1 remote DASes cannot be included in the list.");
    const Dialog dialog(kTitle);
    EXPECT_EQ(List(dialog).Count(), 0);
    dialog.Key(VK_RETURN);  // an empty list is closed without a word
    call.Wait();
    EXPECT_TRUE(answer.chosen);
    EXPECT_EQ(answer.dahsID, 0);
}

TEST(DahsChooserDialog, ReportsASiteFileThatCannotBeUsed) {
    const SiteFolder site(SiteFile({}));
    DahsAnswer answer;
    ModalCall call([&] { answer = GetDahsIdFromUser(7); });
    EXPECT_NE(DismissMessage().find(L"STR-"), std::wstring::npos);
    const Dialog dialog(kTitle);
    EXPECT_EQ(List(dialog).Count(), 0);
    dialog.Key(VK_ESCAPE);
    call.Wait();
    EXPECT_FALSE(answer.chosen);
    EXPECT_EQ(answer.dahsID, 7);
}

}  // namespace v5::test
