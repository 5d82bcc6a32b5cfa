#include "v5dbil/SiteInfo.h"

#include <utility>

namespace v5::devkit {

SiteInfo::SiteInfo(ComPtr<DatabaseInterface> databases, std::wstring site)
    : databases_(std::move(databases)), site_(std::move(site)) {}

STDMETHODIMP SiteInfo::get_SiteID(BSTR* site) {
    return Return(site, [&] { return site_; });
}

STDMETHODIMP SiteInfo::get_CurrentUserName(BSTR* userName) {
    return Return(userName, [&] {
        return databases_->Reported(L"tell the current user", [&] { return databases_->SiteOf(site_).CurrentUser(); });
    });
}

STDMETHODIMP SiteInfo::get_ConnectionString(BSTR* connectionString) {
    return Return(connectionString, [&] {
        return databases_->Reported(L"tell the connection string",
                                    [&] { return databases_->SiteOf(site_).ConnectionString(); });
    });
}

STDMETHODIMP SiteInfo::get_AllowsSqlLogins(VARIANT_BOOL* allowed) {
    return Return(allowed, [&] {
        return databases_->Reported(L"tell whether SQL logins are allowed",
                                    [&] { return databases_->SiteOf(site_).AllowsSqlLogins(); });
    });
}

}  // namespace v5::devkit
