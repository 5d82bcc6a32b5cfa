#include "security/AlarmResetPassword.h"

namespace v5 {

namespace {

constexpr std::wstring_view kPasswordPath = L"/*/ManualAlarmResetPwd";
constexpr std::wstring_view kNoPassword = L"--error; no password--";

}  // namespace

std::wstring AlarmResetPassword::Stored() {
    std::wstring password(kNoPassword);
    mSite.Guard([&] {
        if (!mSite.HasDatabase()) {
            return;
        }
        const StoredDocument document = mSite.Read(kAlarmResetDocument, L"Can't parse XML [STR-0113]");
        if (const auto element = document.xml ? SelectFirst(*document.xml, kPasswordPath) : nullptr) {
            password = element->Text();
        }
    });
    return password;
}

void AlarmResetPassword::Set(std::wstring_view scrambled, PrivilegeLevel held) {
    if (held < level::kOSAdmin) {
        throw SecurityProblem(L"Insufficient privileges to change 'manual alarm reset password' [STR-015]",
                              kMessageTypeRefused);
    }
    const std::wstring user = mUser.Name();
    const StoredDocument document = mSite.ReadForChange(kAlarmResetDocument, L"Can't parse XML [STR-0116]");
    SelectOrAppend(*document.xml, kPasswordPath, L"ManualAlarmResetPwd")->SetText(scrambled);
    AppendHistory(*document.xml, {{L"tstamp", mSite.Timestamp()}, {L"by", user}});
    mSite.Save(document, L"Can't save XML [STR-0143]",
               {{L"Manual alarm reset password changed by '" + user + L"'", kAuditCategory, 2, L"STR-0117"}});
}

}  // namespace v5
