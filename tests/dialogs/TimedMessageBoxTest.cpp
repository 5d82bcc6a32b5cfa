#include <algorithm>

#include "Calls.h"
#include "dialogs/ControlIds.h"

namespace v5::test {

namespace {

constexpr wchar_t kTitle[] = L"Message box under test";

// Shows a box, works it, and gives its answer.
long Answer(long style, const std::function<void(const Dialog&)>& work, long timeout = 0) {
    long result = -1;
    ModalCall call([&] { result = AsyncMsgBox(L"Go on?", style, kTitle, timeout); });
    work(Dialog(kTitle));
    call.Wait();
    return result;
}

int Pixels(int twips) {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return MulDiv(twips, dpi, 1440);
}

RECT PlaceOf(const Dialog& box, HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, box.Window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

}  // namespace

TEST(TimedMessageBox, EveryButtonOfEverySetAnswersToAClick) {
    const struct {
        long style;
        std::vector<int> buttons;
    } sets[] = {{0, {1}}, {1, {1, 2}}, {2, {3, 4, 5}}, {3, {6, 7, 2}}, {4, {6, 7}}, {5, {4, 2}}, {7, {1}}};
    for (const auto& set : sets) {
        for (const int button : set.buttons) {
            EXPECT_EQ(Answer(set.style,
                             [&](const Dialog& box) {
                                 int left = 0;
                                 for (const int each : set.buttons) {  // in this order, and no others
                                     EXPECT_GT(PlaceOf(box, box.Control(each)).left, left);
                                     left = PlaceOf(box, box.Control(each)).left;
                                 }
                                 for (int other = 1; other <= 7; ++other) {
                                     const bool shown =
                                         std::find(set.buttons.begin(), set.buttons.end(), other) != set.buttons.end();
                                     EXPECT_EQ(box.Control(other) != nullptr && box.IsVisible(other), shown) << other;
                                 }
                                 box.Click(button);
                             }),
                      button);
        }
    }
}

TEST(TimedMessageBox, KeysAnswer) {
    const struct {
        long style;
        std::vector<WORD> keys;
        long answer;
    } cases[] = {
        {0x00, {VK_RETURN}, 1},
        {0x24, {VK_RETURN}, 6},
        {0x124, {VK_RETURN}, 7},
        {0x203, {VK_RETURN}, 2},
        {0x304, {VK_RETURN}, 6},
        {0x03, {VK_ESCAPE}, 2},
        {0x00, {VK_ESCAPE}, 1},
        {0x04, {VK_ESCAPE, 'N'}, 7},  // Esc does nothing where it has no meaning
        {0x02, {VK_ESCAPE, 'R'}, 4},
        {0x04, {'N'}, 7},
        {0x00, {'Y'}, 6},  // a button that is not shown
        {0x00, {'X', 'A'}, 3},
        {0x00, {'I'}, 5},
        {0x04, {'C'}, 2},
        {0x04, {'K'}, 1},
        {0x04, {VK_TAB, VK_SPACE}, 7},
        {0x04, {VK_RIGHT, VK_RETURN}, 7},
        {0x04, {VK_TAB, VK_TAB, VK_RETURN}, 6},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Answer(each.style, [&](const Dialog& box) { box.Keys(each.keys); }), each.answer)
            << each.style << " " << each.keys.front();
    }
    EXPECT_EQ(Answer(4, [](const Dialog& box) { box.Key('N', VK_MENU); }), 7);  // the mnemonic
}

TEST(TimedMessageBox, CloseBoxIsCancelOrOff) {
    for (const long style : {0L, 1L, 3L, 5L}) {
        EXPECT_EQ(Answer(style, [](const Dialog& box) { PostMessageW(box.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }),
                  style == 0 ? 1 : 2);
    }
    for (const long style : {2L, 4L}) {
        Answer(style, [](const Dialog& box) {
            EXPECT_NE(GetMenuState(GetSystemMenu(box.Window(), FALSE), SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED, 0u);
            SendMessageW(box.Window(), WM_CLOSE, 0, 0);
            EXPECT_TRUE(IsWindowVisible(box.Window()));
            box.Key('Y');
            box.Key('R');
        });
    }
}

TEST(TimedMessageBox, TimeoutPressesTheDefaultButton) {
    const ULONGLONG began = GetTickCount64();
    const auto wait = [](const Dialog&) {};
    EXPECT_EQ(Answer(0x104, wait, 2), 7);
    EXPECT_GE(GetTickCount64() - began, 1900u);  // not before its time
    EXPECT_EQ(Answer(0x00, wait, 1), 1);
    // Without a time-out no timer runs, so that even a forged tick ends nothing.
    EXPECT_EQ(Answer(
                  0x04,
                  [](const Dialog& box) {
                      SendMessageW(box.Window(), WM_TIMER, 1, 0);
                      box.Key('N');
                  },
                  -5),
              7);
}

TEST(TimedMessageBox, StandsByItsDesignSizes) {
    for (const long style : {0x02L, 0x32L}) {
        Answer(style, [style](const Dialog& box) {
            const RECT first = PlaceOf(box, box.Control(3));
            const RECT second = PlaceOf(box, box.Control(4));
            const RECT third = PlaceOf(box, box.Control(5));
            RECT client{};
            GetClientRect(box.Window(), &client);
            EXPECT_NEAR(second.left - first.right, Pixels(105), 1);
            EXPECT_NEAR(third.left - second.right, Pixels(105), 1);
            EXPECT_NEAR(client.right, third.right - first.left + Pixels(330), 2);
            EXPECT_NEAR(PlaceOf(box, box.Control(ids::lblPrompt)).left, Pixels(style == 0x02 ? 165 : 885), 1);
            if (style == 0x02) {
                EXPECT_EQ(box.Control(ids::imgIcons), nullptr);
            } else {
                const RECT icon = PlaceOf(box, box.Control(ids::imgIcons));
                EXPECT_NEAR(icon.left, Pixels(165), 1);
                EXPECT_NEAR(icon.top, Pixels(165), 1);
                EXPECT_NE(SendMessageW(box.Control(ids::imgIcons), STM_GETICON, 0, 0), 0);
            }
            box.Key('A');
        });
    }
}

TEST(TimedMessageBox, WrapsItsPromptIntoTheScreen) {
    const std::wstring word(30, L'm');
    std::wstring prompt = L"Tom && Jerry & co\r\n\r\n";
    for (int i = 0; i < 12; ++i) {
        prompt += word + L" ";
    }
    ModalCall call([&] { AsyncMsgBox(prompt + word + word + word, 0, kTitle); });
    const Dialog box(kTitle);
    const std::wstring shown = box.Text(ids::lblPrompt);
    EXPECT_TRUE(shown.starts_with(L"Tom && Jerry & co\r\n\r\n" + word)) << "kept as it is";
    const RECT place = PlaceOf(box, box.Control(ids::lblPrompt));
    EXPECT_LE(place.right - place.left, Pixels(6300) + 2);
    EXPECT_GT(place.right - place.left, Pixels(6300) / 2);
    box.Key(VK_ESCAPE);
    call.Wait();

    // A prompt that no screen can hold leaves the button within reach.
    std::wstring endless;
    for (int i = 0; i < 500; ++i) {
        endless += L"line\r\n";
    }
    ModalCall high([&] { AsyncMsgBox(endless, 0, kTitle); });
    const Dialog highBox(kTitle);
    highBox.Click(1);
}

TEST(TimedMessageBox, OwnerWaitsAndGetsItsFocusBack) {
    ModalCall call([] { AsyncMsgBox(L"Go on?", 4, kTitle); }, ModalCall::Owner::Window);
    const Dialog box(kTitle);
    EXPECT_EQ(GetWindow(box.Window(), GW_OWNER), call.OwnerWindow());
    EXPECT_FALSE(IsWindowEnabled(call.OwnerWindow()));
    RECT owner{};
    RECT window{};
    GetWindowRect(call.OwnerWindow(), &owner);
    GetWindowRect(box.Window(), &window);
    EXPECT_NEAR(owner.left + owner.right, window.left + window.right, 2);
    EXPECT_NEAR(owner.top + owner.bottom, window.top + window.bottom, 2);
    // The thread's other windows live on.
    SetWindowTextW(call.OwnerWindow(), L"Renamed");
    PostMessageW(call.OwnerField(), WM_CHAR, L'x', 0);
    EXPECT_EVENTUALLY(TextOf(call.OwnerField()) == L"x");
    box.Key('Y');
    call.Wait();
    EXPECT_TRUE(IsWindowEnabled(call.OwnerWindow()));
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(call.ThreadId(), &info);
    EXPECT_EQ(info.hwndFocus, call.OwnerField());
}

namespace {

// Runs on the dialog's thread, out of its message loop, while the outer box is shown.
long nestedAnswer = -1;
void CALLBACK ShowNested(HWND window, UINT, UINT_PTR timer, DWORD) {
    KillTimer(window, timer);
    nestedAnswer = AsyncMsgBox(L"Inner", 0x104, L"Inner box", 1);
}

void CALLBACK DestroyOwner(HWND window, UINT, UINT_PTR, DWORD) {
    DestroyWindow(window);
}

}  // namespace

TEST(TimedMessageBox, NestedBoxesReturnInOrder) {
    nestedAnswer = -1;
    EXPECT_EQ(Answer(4,
                     [](const Dialog& outer) {
                         SetTimer(outer.Window(), 99, 1, ShowNested);
                         EXPECT_EVENTUALLY(FindDialog(L"Inner box") != nullptr);
                         const HWND inner = FindDialog(L"Inner box");
                         EXPECT_EQ(GetWindow(inner, GW_OWNER), outer.Window());
                         EXPECT_FALSE(IsWindowEnabled(outer.Window()));
                         EXPECT_EVENTUALLY(nestedAnswer == 7);  // by its time-out
                         EXPECT_TRUE(IsWindowEnabled(outer.Window()));
                         EXPECT_EVENTUALLY(outer.FocusId() == 6);
                         outer.Key('Y');
                     }),
              6);
}

TEST(TimedMessageBox, OwnerThatGoesTakesItsBoxAlong) {
    long result = -1;
    ModalCall call([&] { result = AsyncMsgBox(L"Go on?", 4, kTitle); }, ModalCall::Owner::Window);
    const Dialog box(kTitle);
    SetTimer(call.OwnerWindow(), 1, 1, DestroyOwner);
    call.Wait();
    EXPECT_EQ(result, 2);
}

TEST(TimedMessageBox, QuitRequestEndsTheBoxAndReachesTheCaller) {
    bool quitArrived = false;
    ModalCall call([&] {
        AsyncMsgBox(L"Go on?", 4, kTitle);
        MSG message;
        quitArrived = PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.wParam == 77;
    });
    const Dialog box(kTitle);
    PostThreadMessageW(call.ThreadId(), WM_QUIT, 77, 0);
    call.Wait();
    EXPECT_TRUE(quitArrived);
}

}  // namespace v5::test
