#include "security/AccountLists.h"

#include <algorithm>

#include "base/Text.h"

namespace v5 {

struct AccountLists::ListOfLevel {
    PrivilegeLevel level;
    std::wstring_view element;
    std::wstring_view path;
    std::wstring_view auditText;
};

// In the order in which the lists are tested: the highest level first.
const AccountLists::ListOfLevel AccountLists::kLists[] = {
    {level::k3High, L"L3", L"/*/L3", L"Account list for Vantor Level 3 was changed by '$username$'"},
    {level::k2, L"L2", L"/*/L2", L"Account list for Vantor Level 2 was changed by '$username$'"},
    {level::k1, L"L1", L"/*/L1", L"Account list for Vantor Level 1 was changed by '$username$'"},
};

namespace {

constexpr std::wstring_view kCannotSave = L"Can't save XML [STR-0127]";

bool IsSid(std::wstring_view entry) {
    return entry.starts_with(L"S-");
}

std::wstring ListForm(XmlDocument& xml, std::wstring_view path) {
    std::wstring list;
    for (const auto& element : xml.Select(path)) {
        const std::wstring text = element->Text();
        const std::wstring_view entry = TrimXml(text);
        if (entry.empty()) {
            continue;
        }
        if (!list.empty()) {
            list += L',';
        }
        const std::wstring name = element->Attribute(L"name");
        if (const std::wstring_view shown = TrimXml(name); !shown.empty()) {
            list.append(shown).append(L" ");
        }
        list += IsSid(entry) ? L"[" + std::wstring(entry) + L"]" : std::wstring(entry);
    }
    return list;
}

std::wstring Quoted(std::wstring_view text) {
    return L"\"" + std::wstring(text) + L"\"";
}

}  // namespace

PrivilegeLevel AccountLists::UserLevel() {
    PrivilegeLevel level = level::kNone;
    mSite.ReportFailures([&] {
        if (!mSite.HasDatabase()) {
            return;
        }
        const Authentication authentication = mUser.KnownAuthentication();
        if (authentication == Authentication::Unknown) {
            return;  // neither a SID nor a login can count, nor an administrator
        }
        StoredDocument document;
        mSite.ReportFailures([&] { document = mSite.Read(kAccountsDocument, L"Can't parse XML [STR-0110]"); });
        const bool isWindows = authentication == Authentication::Windows;
        const auto accounts = isWindows ? mSite.Host().NewAccounts() : nullptr;
        if (document.xml) {
            level = ListedLevel(*document.xml, accounts.get());
        }
        if (level < level::kOSAdmin && accounts && accounts->IsCurrentUserAnAdministrator()) {
            level = level::kOSAdmin;
        }
    });
    return level;
}

PrivilegeLevel AccountLists::ListedLevel(XmlDocument& xml, Accounts* accounts) {
    const std::wstring self = accounts ? ToUpper(accounts->CurrentUserSid()) : ToLower(mUser.SqlLogin());
    const auto isUser = [&](const std::unique_ptr<XmlElement>& element) {
        const std::wstring entry = ToUpper(TrimXml(element->Text()));
        if (entry.empty() || IsSid(entry) != (accounts != nullptr)) {
            return false;  // a SID counts with Windows authentication only, a login name with SQL authentication only
        }
        return accounts ? entry == self || accounts->IsCurrentUserMemberOfGroup(entry) : ToLower(entry) == self;
    };
    for (const ListOfLevel& list : kLists) {
        const auto elements = xml.Select(list.path);
        if (std::any_of(elements.begin(), elements.end(), isUser)) {
            return list.level;
        }
    }
    return level::kNone;
}

AccountListTexts AccountLists::Read() {
    const StoredDocument document = mSite.Read(kAccountsDocument, L"Can't parse XML [STR-0119]");
    if (!document.xml) {
        return {};
    }
    return {ListForm(*document.xml, L"/*/L1"), ListForm(*document.xml, L"/*/L2"), ListForm(*document.xml, L"/*/L3")};
}

void AccountLists::Replace(PrivilegeLevel level, std::wstring_view list) {
    const auto* const row = std::find_if(std::begin(kLists), std::end(kLists),
                                         [&](const ListOfLevel& candidate) { return candidate.level == level; });
    if (row == std::end(kLists)) {
        throw SecurityProblem(L"Invalid privilege level [STR-0124]");
    }
    mSite.Change(kAccountsDocument, L"Can't parse XML [STR-0126]", kCannotSave, [&](XmlDocument& xml) {
        const std::wstring oldList = ListForm(xml, row->path);
        for (const auto& element : xml.Select(row->path)) {
            element->Remove();
        }
        const bool sqlAuthentication = mUser.IsSqlAuthenticationUsed();
        for (const std::wstring& item : Split(list, L',')) {
            const std::wstring_view entry = TrimXml(item);
            if (entry.empty()) {
                continue;
            }
            const auto element = xml.Append(row->element);
            element->SetText(entry);
            if (IsSid(entry) && !sqlAuthentication) {
                element->SetAttribute(L"name", mSite.Host().NewAccounts()->AccountNameOfSid(entry));
            }
        }
        const std::wstring newList = ListForm(xml, row->path);
        if (newList == oldList) {
            return std::vector<EventRecord>();
        }
        const std::wstring user = mUser.Name();
        AppendHistory(xml, {{L"level", std::to_wstring(level)},
                            {L"tstamp", mSite.Timestamp()},
                            {L"old", oldList},
                            {L"new", newList},
                            {L"by", user}});
        const std::wstring change = L"Changed " + std::wstring(row->element) + L" SID list " + user + L": original=" +
                                    Quoted(oldList) + L" new=" + Quoted(newList);
        return std::vector<EventRecord>{
            {change, kAuditCategory, 1, L"STR-0128"},
            {ReplaceAll(row->auditText, L"$username$", user), kAuditCategory, 2, L"STR-0144"}};
    });
}

void AccountLists::Replace(const AccountListTexts& lists) {
    const struct {
        PrivilegeLevel level;
        const std::wstring& list;
    } rows[] = {{level::k1, lists.level1}, {level::k2, lists.level2}, {level::k3High, lists.level3}};
    for (const auto& row : rows) {
        for (const std::wstring& item : Split(row.list, L',')) {
            if (!IsXmlText(TrimXml(item))) {
                throw SecurityProblem(kCannotSave);
            }
        }
    }
    for (const auto& row : rows) {
        Replace(row.level, row.list);
    }
}

}  // namespace v5
