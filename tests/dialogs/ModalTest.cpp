// What all forms have in common: they close at once, hold up the thread's other windows, and read texts as texts.
#include <vector>

#include "Calls.h"
#include "SiteFile.h"
#include "component/SiteFolder.h"
#include "security/frmGetPasswordFromUser.h"

namespace v5::test {

namespace {

struct Form {
    const wchar_t* title;
    std::function<void()> show;
};
const Form kForms[] = {
    {L"Message box", [] { AsyncMsgBox(L"Salt & pepper", 1, L"Message box"); }},
    {L"Date", [] { GetDateFromUser(L"Date", 0.0, false, true, false); }},
    {L"Time", [] { GetTimeFromUser(L"Time", 0.5); }},
    {L"Choose DAHS", [] { GetDahsIdFromUser(0); }},
    {L"Password", [] { AskForPassword({}, [](const SecretText&) { return true; }); }},
    {L"About Vantor", [] { ShowVantorAboutBox(L"Salt & pepper"); }},
    {L"Vantor Support Information", [] { ShowVantorSupportInfo(); }},
};

HWND NewWindow(DWORD style) {
    return CreateWindowExW(0, L"#32770", L"Another", WS_OVERLAPPEDWINDOW | style, 20, 20, 200, 100, nullptr, nullptr,
                           nullptr, nullptr);
}

}  // namespace

TEST(EveryForm, HoldsUpTheOtherWindowsOfItsThreadAndGivesThemBack) {
    const SiteFolder site(SiteFile({{1, "NORTH", "Standalone"}}));
    for (const Form& form : kForms) {
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
    const std::pair<const char*, std::function<void(const Dialog&)>> modes[] = {
        {"Alt", [](const Dialog& box) { box.Key(VK_MENU); }},
        {"F10", [](const Dialog& box) { box.Key(VK_F10); }},
        {"Alt+Space", [](const Dialog& box) { box.Key(VK_SPACE, VK_MENU); }},
        {"the menu of the caption",
         [](const Dialog& box) { PostMessageW(box.Window(), WM_CONTEXTMENU, 0, MAKELPARAM(-1, -1)); }},
        {"a system menu", [](const Dialog& box) { PostMessageW(box.Window(), WM_SYSCOMMAND, SC_KEYMENU, ' '); }},
        {"a move", [](const Dialog& box) { PostMessageW(box.Window(), WM_SYSCOMMAND, SC_MOVE, 0); }},
    };
    for (const auto& [name, enter] : modes) {
        long result = -1;
        const ULONGLONG began = GetTickCount64();
        ModalCall call([&] { result = AsyncMsgBox(L"Go on?", 0x104, kTitle, 2); });
        {
            const Dialog box(kTitle);
            enter(box);
        }
        call.Wait();
        EXPECT_EQ(result, IDNO) << name;
        EXPECT_LT(GetTickCount64() - began, 10'000u) << name;
    }
}

TEST(EveryForm, ReadsTextsFromOutsideAsTextsNotAsMnemonics) {
    for (const Form& form : {kForms[0], kForms[5]}) {
        ModalCall call(form.show);
        Dialog(form.title).Key(VK_SPACE);  // presses the button, though a text has "& "
        call.Wait();
    }
}

TEST(EveryForm, TabbingStartsFromTheDefaultButton) {
    ModalCall call([] { AsyncMsgBox(L"Go on?", 0x103, L"Tabs"); });
    const Dialog box(L"Tabs");
    for (const int id : {IDNO, IDYES, IDCANCEL, IDNO}) {
        EXPECT_EVENTUALLY(box.FocusId() == id);
        box.Key(VK_TAB);
    }
    box.Key(VK_ESCAPE);
    call.Wait();
}

}  // namespace v5::test
