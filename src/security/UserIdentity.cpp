#include "security/UserIdentity.h"

namespace v5 {

std::wstring UserIdentity::Name() {
    if (cachedName_.empty()) {
        cachedName_ = NameNoncached();
    }
    return cachedName_;
}

std::wstring UserIdentity::NameNoncached() {
    std::wstring name;
    site_.Guard([&] {
        try {
            name = site_.Database()->CurrentUserName(site_.SiteID());
        } catch (const AutomationError&) {
            throw SecurityProblem(L"STR-0150: " + CurrentFailureText());
        }
    });
    return name.empty() ? WindowsName() : name;
}

std::wstring UserIdentity::WindowsName() {
    std::wstring name;
    site_.Guard([&] { name = site_.Host().NewAccounts()->CurrentUserName(); });
    return name;
}

bool UserIdentity::IsSqlAuthenticationUsed() {
    bool used = false;
    site_.Guard([&] {
        const auto database = site_.Database();
        used = !database->UsesWindowsAuthentication(database->ConnectionString(site_.SiteID()));
    });
    return used;
}

bool UserIdentity::IsSqlAuthenticationEnabled() {
    bool enabled = false;
    site_.Guard([&] { enabled = site_.Database()->AllowsSqlLogins(site_.SiteID()); });
    return enabled;
}

}  // namespace v5
