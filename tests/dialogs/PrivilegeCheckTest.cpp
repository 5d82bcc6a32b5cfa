// A refused privilege check that a password overcomes, through the registered component and its real windows.
#include <comutil.h>
#include <wrl/client.h>

#include "Driver.h"
#include "ProductConstants.h"
#include "V5Strings.h"
#include "dialogs/ControlIds.h"
#include "platform/AnsiCodePage.h"
#include "security/Scrambler.h"

namespace v5::test {

namespace {

constexpr wchar_t kPromptTitle[] = L"Confirm alarms";
constexpr wchar_t kBoxTitle[] = L"Vantor Security";

struct Answer {
    VARIANT_BOOL allowed = VARIANT_FALSE;
    VARIANT_BOOL master = VARIANT_TRUE;
    std::wstring errorMessage = L"untouched";
};

// Asks for the confirmation of alarms on a fresh site whose alarm-reset password is "reset", and works the windows.
Answer Check(const std::function<void()>& work) {
    wchar_t folder[MAX_PATH], file[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"v5p", 0, file);
    DeleteFileW(file);
    const _bstr_t site(L"S1"), login((std::wstring(L"Data Source=") + file + L";Integrated Security=SSPI").c_str());
    const std::wstring reset(Scramble(L"reset", product::kScramblerKey, AnsiCodePage()).View());
    Answer answer;
    ModalCall call([&] {
        Microsoft::WRL::ComPtr<_NimboSecurity> security;
        ASSERT_EQ(CoCreateInstance(__uuidof(NimboSecurity), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&security)),
                  S_OK);
        VARIANT_BOOL done = VARIANT_FALSE;
        security->Setup(site, _bstr_t(L"EN"), login, login, _bstr_t(L"Dialog tests"), VARIANT_FALSE, &done);
        EXPECT_EQ(done, VARIANT_TRUE);
        security->SetManualAlarmResetPwd(_bstr_t(reset.c_str()), &done);
        EXPECT_EQ(done, VARIANT_TRUE);
        _bstr_t message(L"left over");
        security->CheckUserPrivilegeLevelEx(V5Strings::RID_DR_CloseManualConfirmation, VARIANT_TRUE, &message.GetBSTR(),
                                            _bstr_t(L"Alarm-reset password:"), _bstr_t(kPromptTitle), &answer.master,
                                            &answer.allowed);
        answer.errorMessage = static_cast<const wchar_t*>(message);
        security->Teardown();
    });
    work();
    call.Wait();
    DeleteFileW(file);
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
    const Answer right = Check([] {
        const HWND first = TypeWrongPassword();
        const Dialog prompt(kPromptTitle);
        RECT place{};
        GetWindowRect(prompt.Window(), &place);
        EXPECT_TRUE(prompt.Window() == first && place.left == 33 && place.top == 44);
        prompt.Type(L"reset");  // into a box that is empty again
        prompt.Key(VK_RETURN);
    });
    EXPECT_EQ(right.allowed, VARIANT_TRUE);
    EXPECT_EQ(right.master, VARIANT_FALSE);
    EXPECT_EQ(right.errorMessage, L"");
    const Answer cancelled = Check([] {
        TypeWrongPassword();
        Dialog(kPromptTitle).Key(VK_ESCAPE);
    });
    EXPECT_EQ(cancelled.allowed, VARIANT_FALSE);
    EXPECT_EQ(cancelled.errorMessage, L"");
}

}  // namespace v5::test
