// What all forms have in common: they close at once, hold up the thread's other windows, and read texts as texts.
#include <vector>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"

namespace v5::test {

namespace {

HWND NewWindow(DWORD style) {
    return CreateWindowExW(0, L"#32770", L"Another", WS_OVERLAPPEDWINDOW | style, 20, 20, 200, 100, nullptr, nullptr,
                           nullptr, nullptr);
}

}  // namespace

TEST(EveryForm, HoldsUpTheOtherWindowsOfItsThreadAndGivesThemBack) {
    const SiteFolder site(SiteFile({{1, "NORTH", "Standalone"}}));
    for (const AnyDialog& form : AllDialogs()) {
        for (const bool isBehind : {false, true}) {
            SCOPED_TRACE(isBehind ? "behind another program" : "in front");
            HWND second = nullptr, hidden = nullptr, off = nullptr;
            bool wereGivenBack = false;
            ModalCall call(
                [&] {
                    second = NewWindow(WS_VISIBLE);
                    hidden = NewWindow(0);
                    off = NewWindow(WS_VISIBLE | WS_DISABLED);
                    SetActiveWindow(call.OwnerWindow());
                    SetFocus(call.OwnerField());
                    if (isBehind) {
                        SetForegroundWindow(GetDesktopWindow());
                    }
                    form.show();
                    wereGivenBack = IsWindowEnabled(call.OwnerWindow()) && IsWindowEnabled(second) &&
                                    IsWindowEnabled(hidden) && !IsWindowEnabled(off);
                    if (!isBehind) {
                        EXPECT_EQ(GetFocus(), call.OwnerField()) << form.title;
                    }
                },
                ModalCall::Owner::Window);
            const Dialog dialog(form.title);
            for (const HWND window : {call.OwnerWindow(), second, hidden, off}) {
                EXPECT_FALSE(IsWindowEnabled(window)) << form.title;
            }
            dialog.Key(VK_ESCAPE);
            call.Wait();
            EXPECT_TRUE(wereGivenBack) << form.title;
        }
    }
}

// A menu and a move of the window run message loops of their own.
TEST(EveryForm, IsGoneWhenItsTimeIsUpWhateverIsUnderWay) {
    constexpr wchar_t kTitle[] = L"Two seconds";
    const std::function<void(const Dialog&)> modes[] = {
        [](const Dialog& box) { box.Key(VK_MENU); },
        [](const Dialog& box) { box.Key(VK_F10); },
        [](const Dialog& box) { box.Key(VK_SPACE, VK_MENU); },
        [](const Dialog& box) { PostMessageW(box.Window(), WM_CONTEXTMENU, 0, MAKELPARAM(-1, -1)); },
        [](const Dialog& box) { PostMessageW(box.Window(), WM_SYSCOMMAND, SC_KEYMENU, ' '); },
        [](const Dialog& box) { PostMessageW(box.Window(), WM_SYSCOMMAND, SC_MOVE, 0); },
    };
    for (const auto& enter : modes) {
        SCOPED_TRACE(&enter - modes);
        long result = -1;
        const ULONGLONG began = GetTickCount64();
        ModalCall call([&] { result = AsyncMsgBox(L"Go on?", 0x104, kTitle, 2); });
        enter(Dialog(kTitle));
        call.Wait();
        EXPECT_EQ(result, IDNO);
        EXPECT_LT(GetTickCount64() - began, 10'000u);
    }
}

TEST(EveryForm, ReadsTextsFromOutsideAsTextsNotAsMnemonics) {
    for (const int i : {0, 1}) {
        const AnyDialog form = AllDialogs()[static_cast<size_t>(i)];
        const ModalCall call(form.show);
        Dialog(form.title).Key(VK_SPACE);  // presses the button, though a text has "& "
    }
}

TEST(EveryForm, TabbingStartsFromTheDefaultButton) {
    const ModalCall call([] { AsyncMsgBox(L"Go on?", 0x103, L"Tabs"); });
    const Dialog box(L"Tabs");
    for (const int id : {IDNO, IDYES, IDCANCEL, IDNO}) {
        EXPECT_EVENTUALLY(box.FocusId() == id);
        box.Key(VK_TAB);
    }
    box.Key(VK_ESCAPE);
}

}  // namespace v5::test
