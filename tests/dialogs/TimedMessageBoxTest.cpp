#include <algorithm>

#include "Calls.h"
#include "dialogs/ControlIds.h"

namespace v5::test {

namespace {

constexpr wchar_t kTitle[] = L"Message box under test";

// Shows a box, works it, and gives its answer.
long Answer(long style, const Work& work, long timeout = 0) {
    return AnswerOf([&] { return AsyncMsgBox(L"Go on?", style, kTitle, timeout); }, kTitle, work);
}

int Pixels(int twips) {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return MulDiv(twips, dpi, 1440);
}

RECT PlaceOf(const Dialog& box, int id) {
    RECT place{};
    GetWindowRect(box.Control(id), &place);
    MapWindowPoints(nullptr, box.Window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::wstring Repeated(const std::wstring& text, int times) {
    std::wstring result;
    while (times-- > 0) {
        result += text;
    }
    return result;
}

}  // namespace

// The sets' buttons, their keys and the defaults are the model's; here they stand on the screen by their design sizes.
TEST(TimedMessageBox, EveryButtonOfEverySetStandsInItsPlaceAndAnswersToAClick) {
    const struct {
        long style;
        std::vector<int> buttons;
    } sets[] = {{0, {1}}, {1, {1, 2}}, {0x32, {3, 4, 5}}, {3, {6, 7, 2}}, {0x44, {6, 7}}, {5, {4, 2}}, {7, {1}}};
    for (const auto& set : sets) {
        SCOPED_TRACE(set.style);
        const std::vector<int>& buttons = set.buttons;
        const bool hasIcon = set.style > 7;
        for (const int button : buttons) {
            const auto work = [&](const Dialog& box) {
                for (int id = 1; id <= 7; ++id) {
                    EXPECT_EQ(box.IsVisible(id), std::find(buttons.begin(), buttons.end(), id) != buttons.end()) << id;
                }
                for (size_t i = 1; i < buttons.size(); ++i) {
                    EXPECT_NEAR(PlaceOf(box, buttons[i]).left - PlaceOf(box, buttons[i - 1]).right, Pixels(105), 1);
                }
                const LONG left = PlaceOf(box, buttons.front()).left, right = PlaceOf(box, buttons.back()).right;
                RECT client{};
                GetClientRect(box.Window(), &client);
                EXPECT_NEAR(left, client.right - right, 2);
                EXPECT_TRUE(buttons.size() < 3 || std::abs(left - Pixels(165)) <= 2) << left;
                EXPECT_NEAR(PlaceOf(box, ids::lblPrompt).left, Pixels(hasIcon ? 885 : 165), 1);
                EXPECT_EQ(box.Control(ids::imgIcons) != nullptr, hasIcon);
                if (hasIcon) {
                    EXPECT_NEAR(PlaceOf(box, ids::imgIcons).left, Pixels(165), 1);
                    EXPECT_NEAR(PlaceOf(box, ids::imgIcons).top, Pixels(165), 1);
                    EXPECT_NE(SendMessageW(box.Control(ids::imgIcons), STM_GETICON, 0, 0), 0);
                }
                box.Click(button);
            };
            EXPECT_EQ(Answer(set.style, work), button);
        }
    }
}

TEST(TimedMessageBox, KeysAnswer) {
    const struct {
        long style;
        std::vector<WORD> keys;
        long answer;
    } cases[] = {
        {0x124, {VK_RETURN}, 7},
        {0x03, {VK_ESCAPE}, 2},
        {0x04, {VK_ESCAPE, 'N'}, 7},  // Esc does nothing where it has no meaning
        {0x00, {'X', 'Y'}, 6},        // a button that is not shown
        {0x04, {VK_TAB, VK_SPACE}, 7},
        {0x04, {VK_RIGHT, VK_RETURN}, 7},
        {0x04, {VK_TAB, VK_TAB, VK_RETURN}, 6},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Answer(each.style, Press(each.keys)), each.answer) << each.style << " " << each.keys.front();
    }
    EXPECT_EQ(Answer(4, [](const Dialog& box) { box.Key('N', VK_MENU); }), 7);  // the mnemonic
}

TEST(TimedMessageBox, CloseBoxIsCancelOrOff) {
    const struct {
        long style;
        WORD key;  // to answer with where the close box is off
        long answer;
    } cases[] = {{0, 0, 1}, {1, 0, 2}, {3, 0, 2}, {5, 0, 2}, {2, 'R', 4}, {4, 'Y', 6}};
    for (const auto& each : cases) {
        const auto close = [&](const Dialog& box) {
            const UINT state = GetMenuState(GetSystemMenu(box.Window(), FALSE), SC_CLOSE, MF_BYCOMMAND);
            EXPECT_EQ((state & MF_GRAYED) != 0, each.key != 0);
            SendMessageW(box.Window(), each.key != 0 ? WM_CLOSE : WM_SYSCOMMAND, SC_CLOSE, 0);
            if (each.key != 0) {
                EXPECT_TRUE(IsWindowVisible(box.Window()));
                box.Key(each.key);
            }
        };
        EXPECT_EQ(Answer(each.style, close), each.answer);
    }
}

TEST(TimedMessageBox, TimeoutPressesTheDefaultButton) {
    const ULONGLONG began = GetTickCount64();
    const auto wait = [](const Dialog&) {};
    EXPECT_EQ(Answer(0x104, wait, 2), 7);
    EXPECT_GE(GetTickCount64() - began, 1900u);  // not before its time
    EXPECT_EQ(Answer(0x00, wait, 1), 1);
    // Without a time-out no timer runs, so that even a forged tick ends nothing.
    const auto tick = [](const Dialog& box) {
        SendMessageW(box.Window(), WM_TIMER, 1, 0);
        box.Key('N');
    };
    EXPECT_EQ(Answer(0x04, tick, -5), 7);
}

TEST(TimedMessageBox, WrapsItsPromptIntoTheScreen) {
    const std::wstring word(30, L'm');
    const std::wstring prompt = L"Tom && Jerry & co\r\n\r\n" + Repeated(word + L" ", 12) + Repeated(word, 3);
    ModalCall call([&] { AsyncMsgBox(prompt, 0, kTitle); });
    const Dialog box(kTitle);
    const std::wstring shown = box.Text(ids::lblPrompt);
    EXPECT_TRUE(shown.starts_with(L"Tom && Jerry & co\r\n\r\n" + word)) << "kept as it is";
    const RECT place = PlaceOf(box, ids::lblPrompt);
    EXPECT_LE(place.right - place.left, Pixels(6300) + 2);
    EXPECT_GT(place.right - place.left, Pixels(6300) / 2);
    box.Key(VK_ESCAPE);
    call.Wait();

    // A prompt that no screen can hold leaves the button within reach.
    ModalCall high([&] { AsyncMsgBox(Repeated(L"line\r\n", 500), 0, kTitle); });
    Dialog(kTitle).Click(1);
}

TEST(TimedMessageBox, StandsInTheMiddleOfItsOwner) {
    ModalCall call([] { AsyncMsgBox(L"Go on?", 4, kTitle); }, ModalCall::Owner::Window);
    const Dialog box(kTitle);
    EXPECT_EQ(GetWindow(box.Window(), GW_OWNER), call.OwnerWindow());
    RECT owner{}, window{};
    GetWindowRect(call.OwnerWindow(), &owner);
    GetWindowRect(box.Window(), &window);
    EXPECT_NEAR(owner.left + owner.right, window.left + window.right, 2);
    EXPECT_NEAR(owner.top + owner.bottom, window.top + window.bottom, 2);
    // The thread's other windows live on.
    PostMessageW(call.OwnerField(), WM_CHAR, L'x', 0);
    EXPECT_EVENTUALLY(TextOf(call.OwnerField()) == L"x");
    box.Key('Y');
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
    const auto nest = [](const Dialog& outer) {
        SetTimer(outer.Window(), 99, 1, ShowNested);
        EXPECT_EVENTUALLY(FindDialog(L"Inner box") != nullptr);
        EXPECT_EQ(GetWindow(FindDialog(L"Inner box"), GW_OWNER), outer.Window());
        EXPECT_FALSE(IsWindowEnabled(outer.Window()));
        EXPECT_EVENTUALLY(nestedAnswer == 7);  // by its time-out
        EXPECT_TRUE(IsWindowEnabled(outer.Window()));
        EXPECT_EVENTUALLY(outer.FocusId() == 6);
        outer.Key('Y');
    };
    EXPECT_EQ(Answer(4, nest), 6);
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
