// A refused privilege check that a password overcomes, through the registered component and its real windows.
#include "Driver.h"
#include "ProductConstants.h"
#include "V5Strings.h"
#include "component/Client.h"
#include "component/SiteFolder.h"
#include "dialogs/ControlIds.h"
#include "platform/AnsiCodePage.h"
#include "security/Scrambler.h"

namespace v5::test {

namespace {

constexpr wchar_t kPromptTitle[] = L"Confirm alarms";
constexpr wchar_t kBoxTitle[] = L"Vantor Security";

// Asks for the confirmation of alarms on a fresh site whose alarm-reset password is "reset", and works the windows.
// Gives "allowed" or "refused", "master" for the master password, and the message.
std::wstring Check(const std::function<void()>& work) {
    const SiteFolder folder("");
    const std::wstring login = L"Data Source=" + folder.Path() + L"\\S1.db;Integrated Security=SSPI";
    const std::wstring reset(Scramble(L"reset", product::kScramblerKey, AnsiCodePage()).View());
    std::wstring answer;
    ModalCall call([&] {
        const ComPtr<IDispatch> security = CreateByName(L"V5Strings.NimboSecurity");
        const auto ask = [&](const wchar_t* member, const std::vector<_variant_t>& arguments) {
            const CallResult result = Call(security.Get(), member, arguments);
            EXPECT_EQ(result.status, S_OK) << member;
            return result.value == _variant_t(true);
        };
        EXPECT_TRUE(ask(L"Setup", {L"S1", L"EN", login.c_str(), login.c_str(), L"Dialog tests", false}));
        EXPECT_TRUE(ask(L"SetManualAlarmResetPwd", {reset.c_str()}));
        _variant_t message(L"left over"), master(true);
        answer = ask(L"CheckUserPrivilegeLevelEx",
                     {static_cast<long>(V5Strings::RID_DR_CloseManualConfirmation), true, ByReference(message),
                      L"Alarm-reset password:", kPromptTitle, ByReference(master)})
                     ? L"allowed"
                     : L"refused";
        answer += (master == _variant_t(true) ? L" master" : L"") + Text(message);
        ask(L"Teardown", {});
    });
    work();
    call.Wait();
    return answer;
}

// The one dialog of the whole loop: moved by the user, it comes again where it was left.
HWND TypeWrongPassword() {
    const Dialog prompt(kPromptTitle);
    SetWindowPos(prompt.Window(), nullptr, 33, 44, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(prompt.Text(ids::lblMsg), L"Alarm-reset password:");
    prompt.Type(L"wrong");
    prompt.Key(VK_RETURN);
    const Dialog box(kBoxTitle);
    EXPECT_FALSE(IsWindowVisible(prompt.Window()));
    EXPECT_EQ(GetWindow(box.Window(), GW_OWNER), nullptr);
    box.Key(VK_RETURN);
    return prompt.Window();
}

}  // namespace

TEST(PrivilegeCheckDialogs, AfterAWrongPasswordComesTheRightOneOrACancel) {
    const auto typeRight = [] {
        const HWND first = TypeWrongPassword();
        const Dialog prompt(kPromptTitle);
        RECT place{};
        GetWindowRect(prompt.Window(), &place);
        EXPECT_TRUE(prompt.Window() == first && place.left == 33 && place.top == 44);
        prompt.Type(L"reset");  // into a box that is empty again
        prompt.Key(VK_RETURN);
    };
    EXPECT_EQ(Check(typeRight), L"allowed");
    const auto cancel = [] {
        TypeWrongPassword();
        Dialog(kPromptTitle).Key(VK_ESCAPE);
    };
    EXPECT_EQ(Check(cancel), L"refused");
}

}  // namespace v5::test
