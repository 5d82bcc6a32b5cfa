#include "security/AlarmResetPassword.h"

namespace v5 {

namespace {

constexpr std::wstring_view kPasswordPath = L"/*/ManualAlarmResetPwd";
constexpr std::wstring_view kNoPassword = L"--error; no password--";

}  // namespace

std::wstring AlarmResetPassword::Stored() {
    std::wstring password(kNoPassword);
    mSite.ReportFailures([&] {
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
    mSite.Change(kAlarmResetDocument, L"Can't parse XML [STR-0116]", L"Can't save XML [STR-0143]",
                 [&](XmlDocument& xml) {
                     SelectOrAppend(xml, kPasswordPath, L"ManualAlarmResetPwd")->SetText(scrambled);
                     AppendHistory(xml, {{L"tstamp", mSite.Timestamp()}, {L"by", user}});
                     return std::vector<EventRecord>{
                         {L"Manual alarm reset password changed by '" + user + L"'", kAuditCategory, 2, L"STR-0117"}};
                 });
}

}  // namespace v5
