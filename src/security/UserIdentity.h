// Who the user is, and how the site's databases know that: a SQL login or a Windows account.
#pragma once

#include <string>

#include "security/SecuritySite.h"

namespace v5 {

// Every member reports its own failures and then answers an empty name or false.
class UserIdentity {
  public:
    explicit UserIdentity(SecuritySite& site) : mSite(site) {}

    // The name as first found; never refreshed, because audit records of one program run carry one name.
    std::wstring Name();

    // The site's current database user, else the Windows user.
    std::wstring NameNoncached();
    std::wstring WindowsName();

    // Whether the site's connection string uses SQL instead of Windows authentication.
    bool IsSqlAuthenticationUsed();

    // Whether the site's database server accepts SQL logins.
    bool IsSqlAuthenticationEnabled();

  private:
    SecuritySite& mSite;
    std::wstring mCachedName;
};

}  // namespace v5
