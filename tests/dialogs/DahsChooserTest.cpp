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

    // All rows, each on a line; the selected one with a ">" before it.
    std::wstring Rows() const {
        std::wstring rows;
        for (int row = 0; row < static_cast<int>(SendMessageW(window, LVM_GETITEMCOUNT, 0, 0)); ++row) {
            wchar_t text[200] = L"";
            LVITEMW item{};
            item.pszText = text;
            item.cchTextMax = static_cast<int>(std::size(text));
            SendMessageW(window, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
            const bool isSelected =
                SendMessageW(window, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
            rows += (isSelected ? L">" : L"") + std::wstring(text) + L"\n";
        }
        return rows;
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

// Works the dialog, and gives the answer: the identifier, and "chosen" or not.
std::wstring Ask(long initial, const Work& work, const std::wstring& message = L"", bool allowAll = true) {
    DahsAnswer answer;
    ModalCall call([&] { answer = GetDahsIdFromUser(initial, allowAll, allowAll); });
    if (!message.empty()) {  // comes first, with the same title
        EXPECT_NE(DismissMessage().find(message), std::wstring::npos);
    }
    work(Dialog(kTitle));
    call.Wait();
    return std::to_wstring(answer.dahsID) + (answer.chosen ? L" chosen" : L"");
}

const std::vector<Das> kPair = {{3, "NORTH", "Secondary"}, {5, "NORTH", "Primary"}, {9, "SOUTH", "Standalone", true}};

}  // namespace

TEST(DahsChooserDialog, WaysToChoose) {
    const SiteFolder site(SiteFile(kPair));
    const auto look = [](const Dialog& dialog) {
        const List list(dialog);
        EXPECT_EQ(list.Rows(),
                  L"NORTH - Stack 3 (secondary - use primary instead)\n>NORTH - Stack 5 (primary)\nSOUTH - Stack 9\n");
        EXPECT_EQ(dialog.FocusId(), ids::lsvDahsList);
        EXPECT_EVENTUALLY(list.Shows(0, RGB(192, 192, 192)));
        EXPECT_FALSE(list.Shows(2, RGB(192, 192, 192)));
        dialog.Key(VK_RETURN);
    };
    const struct {
        long initial;
        Work work;
        const wchar_t* answer;
    } cases[] = {
        {0, look, L"5 chosen"},
        {9, Press({VK_RETURN}), L"9"},                       // the initial entry again
        {77, Press({VK_RETURN}), L"5 chosen"},               // an entry that is not offered
        {9, Press({VK_UP, VK_UP, VK_RETURN}), L"3 chosen"},  // a grey row counts too
        {5, Press({'S', VK_RETURN}), L"9 chosen"},           // type-ahead
        {9, [](const Dialog& dialog) { dialog.Click(List(dialog).window, List(dialog).Place(1), 2); }, L"5 chosen"},
        {5, Press({VK_DOWN, VK_ESCAPE}), L"5"},
        {5, Click(IDCANCEL), L"5"},
        {5, CloseByCaption, L"5"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Ask(each.initial, each.work), each.answer) << &each - cases;
    }
}

TEST(DahsChooserDialog, AsksForAChoice) {
    const SiteFolder site(SiteFile({{4, "NORTH", "Secondary"}}));
    const auto work = [](const Dialog& dialog) {
        const List list(dialog);
        const std::wstring row = L"NORTH - Stack 4 (secondary - use primary instead)\n";
        EXPECT_EQ(list.Rows(), row);  // grey, and so not selected
        dialog.Key(VK_RETURN);
        EXPECT_EVENTUALLY(!IsWindowEnabled(dialog.Window()));
        const HWND message = GetLastActivePopup(dialog.Window());
        EXPECT_EQ(TextOf(message), kTitle);
        EXPECT_EVENTUALLY(TextOf(GetDlgItem(message, ids::lblPrompt)) == L"Please choose a DAHS.");
        PostMessageW(message, WM_COMMAND, IDOK, 0);
        EXPECT_EVENTUALLY(IsWindowEnabled(dialog.Window()));
        EXPECT_EVENTUALLY(dialog.FocusId() == ids::lsvDahsList);
        dialog.Click(list.window, list.Place(0));
        EXPECT_EVENTUALLY(list.Rows() == L">" + row);
        dialog.Click(IDOK);
    };
    EXPECT_EQ(Ask(0, work), L"4 chosen");
}

TEST(DahsChooserDialog, SaysWhyTheListIsEmpty) {
    const SiteFolder site(SiteFile({{3, "NORTH", "Secondary"}, {5, "NORTH", "Primary", true}}));
    const auto leave = [](WORD key) {
        return [key](const Dialog& dialog) {
            EXPECT_EQ(List(dialog).Rows(), L"");
            dialog.Key(key);  // an empty list is closed without a word
        };
    };
    EXPECT_EQ(Ask(7, leave(VK_RETURN),
                  L"No DAHS entries are available to choose from. 1 secondary DASes cannot be included in the list. "
                  L"1 remote DASes cannot be included in the list.",
                  false),
              L"0 chosen");
    site.Write("");  // a site file that cannot be used
    EXPECT_EQ(Ask(7, leave(VK_ESCAPE), L"STR-"), L"7");
}

}  // namespace v5::test
