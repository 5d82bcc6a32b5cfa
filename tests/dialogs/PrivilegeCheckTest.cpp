// A refused privilege check that a password overcomes, through the registered component and its real windows.
#include <comutil.h>
#include <wrl/client.h>

#include "Driver.h"
#include "ProductConstants.h"
#include "V5Strings.h"
#include "dialogs/ControlIds.h"
#include "security/MachineSecurityHost.h"
#include "security/Scrambler.h"

namespace v5::test {

namespace {

constexpr wchar_t kPromptTitle[] = L"Confirm alarms";
constexpr wchar_t kBoxTitle[] = L"Vantor Security";

struct CodePage : MachineSecurityHost {
    std::unique_ptr<PasswordPrompt> NewPasswordPrompt() override { return nullptr; }
    void ShowMessageBox(std::wstring_view, std::int32_t, std::wstring_view) override {}
};

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
    const std::wstring reset(Scramble(L"reset", product::kScramblerKey, CodePage()).View());
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

void TypeWrongPassword() {
    const Dialog prompt(kPromptTitle);
    EXPECT_EQ(prompt.Text(ids::kPasswordMessage), L"Alarm-reset password:");
    prompt.Type(L"wrong");
    prompt.Key(VK_RETURN);
    Dialog(kBoxTitle).Key(VK_RETURN);
}

}  // namespace

TEST(PrivilegeCheckDialogs, AfterAWrongPasswordComesTheRightOneOrACancel) {
    CLSID database;
    if (FAILED(CLSIDFromProgID(L"V5DBIL.DatabaseInterface", &database))) {
        GTEST_SKIP() << "the devkit's database is not built";
    }
    const Answer right = Check([] {
        TypeWrongPassword();
        const Dialog prompt(kPromptTitle);
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
