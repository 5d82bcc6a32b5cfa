#include "security/MinimumLevels.h"

#include "base/Numbers.h"

namespace v5 {

namespace {

std::wstring PathOfEntry(RestrictionID restriction) {
    return L"/*/MinPrivLevel[@rid=\"" + std::to_wstring(restriction) + L"\"]";
}

}  // namespace

PrivilegeLevel MinimumLevels::Get(RestrictionID restriction) {
    PrivilegeLevel minimum = level::k3Low;
    mSite.ReportFailures([&] { minimum = Read(restriction); });
    return minimum;
}

PrivilegeLevel MinimumLevels::Read(RestrictionID restriction) {
    const auto fixed = FixedMinimumLevel(restriction);
    return fixed ? *fixed : ConfiguredMinimum(restriction);
}

PrivilegeLevel MinimumLevels::ConfiguredMinimum(RestrictionID restriction) {
    if (IsOpen(mSwitch.Status())) {
        return level::kNone;
    }
    if (restriction == restriction::kUseNimboMenu || !mSite.HasDatabase()) {
        return level::k3Low;
    }
    return StoredMinimum(restriction);
}

PrivilegeLevel MinimumLevels::StoredMinimum(RestrictionID restriction) {
    const StoredDocument document = mSite.Read(kMinimumsDocument, L"Can't parse XML [STR-0130]");
    const auto entry = document.xml ? SelectFirst(*document.xml, PathOfEntry(restriction)) : nullptr;
    if (!entry) {
        return level::k3Low;
    }
    const std::wstring text = entry->Text();
    const auto value = ParseNumber(TrimXml(text));
    if (!value) {
        return level::k3Low;
    }
    const auto level = ToLong(TrimXml(text));
    if (!level || *level != *value || !IsValidLevel(*level)) {  // 50.4 is no level, and must not become 50
        mSite.RaiseProblem(L"Invalid value for RID " + std::to_wstring(restriction) + L" [STR-0131]");
        return level::k3Low;
    }
    return *level;
}

void MinimumLevels::Set(RestrictionID restriction, PrivilegeLevel minimum) {
    if (!IsValidLevel(minimum)) {
        throw SecurityProblem(L"Invalid value [STR-0136]");
    }
    const std::wstring user = mUser.Name();
    mSite.Change(kMinimumsDocument, L"Can't parse XML [STR-0137]", L"Can't save XML [STR-0138]", [&](XmlDocument& xml) {
        auto entry = SelectFirst(xml, PathOfEntry(restriction));
        if (!entry) {
            entry = xml.Append(L"MinPrivLevel");
            entry->SetAttribute(L"rid", std::to_wstring(restriction));
        }
        const std::wstring oldText = entry->Text();
        const std::wstring newText = std::to_wstring(minimum);
        if (oldText == newText) {
            return std::vector<EventRecord>();
        }
        entry->SetText(newText);
        const std::wstring change = L"RID " + std::to_wstring(restriction) + L": min privilege level changed from '" +
                                    oldText + L"' to '" + newText + L"' by '" + user + L"' ";
        return std::vector<EventRecord>{{change, kAuditCategory, 1, L"STR-0139"}};
    });
}

}  // namespace v5
