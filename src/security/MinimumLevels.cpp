#include "security/MinimumLevels.h"

#include "base/Numbers.h"

namespace v5 {

namespace {

std::wstring PathOfEntry(RestrictionID restriction) {
    return L"/*/MinPrivLevel[@rid=\"" + std::to_wstring(restriction) + L"\"]";
}

}  // namespace

PrivilegeLevel MinimumLevels::Get(RestrictionID restriction) {
    if (const auto fixed = FixedMinimumLevel(restriction)) {
        return *fixed;
    }
    PrivilegeLevel minimum = level::k3Low;
    mSite.Guard([&] { minimum = ConfiguredMinimum(restriction); });
    return minimum;
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
    if (!IsNumeric(TrimXml(text))) {
        return level::k3Low;
    }
    const auto value = ToLong(TrimXml(text));
    if (!value || !IsValidLevel(*value)) {
        mSite.RaiseProblem(L"Invalid value for RID " + std::to_wstring(restriction) + L" [STR-0131]");
        return level::k3Low;
    }
    return *value;
}

void MinimumLevels::Set(RestrictionID restriction, PrivilegeLevel minimum) {
    if (!IsValidLevel(minimum)) {
        throw SecurityProblem(L"Invalid value [STR-0136]");
    }
    const std::wstring user = mUser.Name();
    const StoredDocument document = mSite.ReadForChange(kMinimumsDocument, L"Can't parse XML [STR-0137]");
    auto entry = SelectFirst(*document.xml, PathOfEntry(restriction));
    if (!entry) {
        entry = document.xml->Append(L"MinPrivLevel");
        entry->SetAttribute(L"rid", std::to_wstring(restriction));
    }
    const std::wstring stored = entry->Text();
    const std::wstring oldText(TrimXml(stored));
    const std::wstring newText = std::to_wstring(minimum);
    if (oldText == newText) {
        return;
    }
    entry->SetText(newText);
    const std::wstring change = L"RID " + std::to_wstring(restriction) + L": min privilege level changed from '" +
                                oldText + L"' to '" + newText + L"' by '" + user + L"' ";
    mSite.Save(document, L"Can't save XML [STR-0138]", {{change, kAuditCategory, 1, L"STR-0139"}});
}

}  // namespace v5
