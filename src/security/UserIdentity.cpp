#include "security/UserIdentity.h"

namespace v5 {

std::wstring UserIdentity::Name() {
    if (mCachedName.empty()) {
        mCachedName = NameNoncached();
    }
    return mCachedName;
}

std::wstring UserIdentity::NameNoncached() {
    std::wstring name;
    mSite.Guard([&] {
        try {
            name = mSite.Database()->CurrentUserName(mSite.SiteID());
        } catch (const AutomationError&) {
            throw SecurityProblem(L"STR-0150: " + CurrentFailureText());
        }
    });
    return name.empty() ? WindowsName() : name;
}

std::wstring UserIdentity::WindowsName() {
    std::wstring name;
    mSite.Guard([&] { name = mSite.Host().NewAccounts()->CurrentUserName(); });
    return name;
}

bool UserIdentity::IsSqlAuthenticationUsed() {
    bool used = false;
    mSite.Guard([&] {
        const auto database = mSite.Database();
        used = !database->UsesWindowsAuthentication(database->ConnectionString(mSite.SiteID()));
    });
    return used;
}

bool UserIdentity::IsSqlAuthenticationEnabled() {
    bool enabled = false;
    mSite.Guard([&] { enabled = mSite.Database()->AllowsSqlLogins(mSite.SiteID()); });
    return enabled;
}

}  // namespace v5
