#include "security/UserIdentity.h"

#include "base/Text.h"

namespace v5 {

std::wstring UserIdentity::Name() {
    if (mCachedName.empty()) {
        mCachedName = DatabaseUser();
        mIsCachedLogin = !mCachedName.empty();
        if (!mIsCachedLogin) {
            mCachedName = WindowsName();
        }
    }
    return mCachedName;
}

std::wstring UserIdentity::SqlLogin() {
    Name();
    return mIsCachedLogin ? mCachedName : DatabaseUser();
}

std::wstring UserIdentity::NameNoncached() {
    const std::wstring name = DatabaseUser();
    return name.empty() ? WindowsName() : name;
}

std::wstring UserIdentity::DatabaseUser() {
    std::wstring name;
    mSite.ReportFailures([&] {
        try {
            name = mSite.Database()->CurrentUserName(mSite.SiteID());
        } catch (...) {
            throw SecurityProblem(L"STR-0150: " + CurrentFailureText());
        }
    });
    return name;
}

std::wstring UserIdentity::WindowsName() {
    std::wstring name;
    mSite.ReportFailures([&] { name = mSite.Host().NewAccounts()->CurrentUserName(); });
    return name;
}

bool UserIdentity::IsSqlAuthenticationUsed() {
    bool used = false;
    mSite.ReportFailures([&] {
        const auto database = mSite.Database();
        used = !database->UsesWindowsAuthentication(database->ConnectionString(mSite.SiteID()));
    });
    return used;
}

Authentication UserIdentity::KnownAuthentication() {
    auto known = Authentication::Unknown;
    mSite.ReportFailures([&] {
        const auto database = mSite.Database();
        const std::wstring text = database->ConnectionString(mSite.SiteID());
        if (!Trim(text).empty()) {
            known = database->UsesWindowsAuthentication(text) ? Authentication::Windows : Authentication::Sql;
        }
    });
    return known;
}

bool UserIdentity::IsSqlAuthenticationEnabled() {
    bool enabled = false;
    mSite.ReportFailures([&] { enabled = mSite.Database()->AllowsSqlLogins(mSite.SiteID()); });
    return enabled;
}

}  // namespace v5
