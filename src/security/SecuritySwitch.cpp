#include "security/SecuritySwitch.h"

#include "base/Numbers.h"

namespace v5 {

namespace {

constexpr std::wstring_view kEnabledPath = L"/*/Enabled";

bool BooleanOf(std::wstring_view text) {
    const std::optional<bool> value = ToBoolean(text);
    if (!value) {
        throw AutomationError::RunTime(13, L"Type mismatch");
    }
    return *value;
}

}  // namespace

SecurityStatus SecuritySwitch::Status() {
    SecurityStatus status = SecurityStatus::EnabledOther;
    mSite.ReportFailures([&] { status = ReadStatus(); });
    return status;
}

SecurityStatus SecuritySwitch::ReadStatus() {
    if (!mSite.HasDatabase()) {
        mSite.RaiseProblem(L"DB not available [STR-0099]");
        return SecurityStatus::EnabledOther;
    }
    const StoredDocument document = mSite.Read(kSwitchDocument, L"Can't parse XML [STR-0100]");
    if (!document.xml) {
        return document.isStored ? SecurityStatus::EnabledOther : SecurityStatus::EnabledByDefault;
    }
    const auto element = SelectFirst(*document.xml, kEnabledPath);
    if (!element) {
        return SecurityStatus::EnabledByDefault;
    }
    return BooleanOf(TrimXml(element->Text())) ? SecurityStatus::EnabledConfigured : SecurityStatus::DisabledConfigured;
}

void SecuritySwitch::Set(bool enabled, PrivilegeLevel held) {
    if (held != level::kOSAdmin && held < level::k3High) {
        throw SecurityProblem(L"Insufficient privileges [STR-0102]", kMessageTypeRefused);
    }
    const std::wstring user = mUser.Name();
    mSite.Change(kSwitchDocument, L"Can't parse XML [STR-0103]", L"Can't save XML [STR-0104]", [&](XmlDocument& xml) {
        SelectOrAppend(xml, kEnabledPath, L"Enabled")->SetText(enabled ? L"1" : L"0");
        AppendHistory(xml,
                      {{L"action", enabled ? L"Enabled" : L"Disabled"}, {L"tstamp", mSite.Timestamp()}, {L"by", user}});
        const std::wstring_view action = enabled ? L"Vantor security enabled by '" : L"Vantor security disabled by '";
        return std::vector<EventRecord>{{std::wstring(action) + user + L"'", kAuditCategory, 2, L"STR-0105"}};
    });
}

}  // namespace v5
