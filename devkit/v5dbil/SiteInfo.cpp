#include "v5dbil/SiteInfo.h"

#include <utility>

namespace v5::devkit {

SiteInfo::SiteInfo(ComPtr<DatabaseInterface> databases, std::wstring site)
    : mDatabases(std::move(databases)), mSite(std::move(site)) {}

STDMETHODIMP SiteInfo::get_SiteID(BSTR* site) {
    return Return(site, [&] { return mSite; });
}

STDMETHODIMP SiteInfo::get_CurrentUserName(BSTR* userName) {
    return Return(userName, [&] {
        return mDatabases->Reported(L"tell the current user", [&] { return mDatabases->SiteOf(mSite).CurrentUser(); });
    });
}

STDMETHODIMP SiteInfo::get_ConnectionString(BSTR* connectionString) {
    return Return(connectionString, [&] {
        return mDatabases->Reported(L"tell the connection string",
                                    [&] { return mDatabases->SiteOf(mSite).ConnectionString(); });
    });
}

STDMETHODIMP SiteInfo::get_AllowsSqlLogins(VARIANT_BOOL* allowed) {
    return Return(allowed, [&] {
        return mDatabases->Reported(L"tell whether SQL logins are allowed",
                                    [&] { return mDatabases->SiteOf(mSite).AllowsSqlLogins(); });
    });
}

}  // namespace v5::devkit
