// The password box is shown by a privilege check only, so this test shows it itself.
#include "security/frmGetPasswordFromUser.h"

#include "Driver.h"
#include "dialogs/ControlIds.h"

namespace v5::test {

namespace {

constexpr wchar_t kTitle[] = L"Password under test";

// What the user's input gives; "(cancelled)" when cancelled.
std::wstring Ask(const Work& work) {
    const auto call = [] {
        std::wstring answer = L"(cancelled)";
        AskForPassword({L"Type the password & press OK.", kTitle}, [&](const SecretText& typed) {
            answer = typed.View();
            return true;
        });
        return answer;
    };
    return AnswerOf(call, kTitle, work);
}

}  // namespace

TEST(PasswordDialog, GivesTheTypedTextOrNothing) {
    const auto type = [](const Dialog& dialog) {
        EXPECT_EQ(dialog.Text(ids::lblMsg), L"Type the password & press OK.");
        EXPECT_EQ(dialog.FocusId(), ids::txtPassword);
        dialog.Type(L"Pa55 word");
        dialog.Key(VK_RETURN);
    };
    EXPECT_EQ(Ask(type), L"Pa55 word");
    EXPECT_EQ(Ask(Click(IDOK)), L"");
    EXPECT_EQ(Ask(Press({'X', VK_ESCAPE})), L"(cancelled)");
    EXPECT_EQ(Ask(Click(IDCANCEL)), L"(cancelled)");
}

TEST(PasswordDialog, KeepsTheTextInTheBox) {
    const auto spy = [](const Dialog& dialog) {
        const HWND box = dialog.Control(ids::txtPassword);
        dialog.Type(L"secret");
        // Characters arrive one by one; the selection tells when the last one has.
        EXPECT_EVENTUALLY(HIWORD(SendMessageW(box, EM_GETSEL, 0, 0)) == 6);
        EXPECT_EQ(TextOf(box), L"");
        const DWORD clipboard = GetClipboardSequenceNumber();
        SendMessageW(box, EM_SETSEL, 0, -1);
        SendMessageW(box, WM_COPY, 0, 0);
        SendMessageW(box, WM_CUT, 0, 0);
        EXPECT_EQ(GetClipboardSequenceNumber(), clipboard);
        SendMessageW(box, EM_SETPASSWORDCHAR, 0, 0);
        EXPECT_NE(SendMessageW(box, EM_GETPASSWORDCHAR, 0, 0), 0);
        dialog.Key(VK_RETURN);
    };
    EXPECT_EQ(Ask(spy), L"secret");
}

}  // namespace v5::test
