// What the database interface knows about one site, as an object of its own.
#pragma once

#include <string>

#include "v5dbil/DatabaseInterface.h"

namespace v5::devkit {

class SiteInfo final : public AutomationObject<SiteInfo, ISiteInfo, ::SiteInfo> {
  public:
    static constexpr wchar_t kProgId[] = L"V5DBIL.SiteInfo";

    SiteInfo(ComPtr<DatabaseInterface> databases, std::wstring site);

    STDMETHODIMP get_SiteID(BSTR* site) override;
    STDMETHODIMP get_CurrentUserName(BSTR* userName) override;
    STDMETHODIMP get_ConnectionString(BSTR* connectionString) override;
    STDMETHODIMP get_AllowsSqlLogins(VARIANT_BOOL* allowed) override;

  private:
    ComPtr<DatabaseInterface> mDatabases;
    std::wstring mSite;
};

}  // namespace v5::devkit
