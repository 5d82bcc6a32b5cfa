// Who the user is, and how the site's databases know that: a SQL login or a Windows account.
#pragma once

#include <string>

#include "security/SecuritySite.h"

namespace v5 {

// How the user is known to the site's databases; Unknown when the database does not tell.
enum class Authentication { Unknown, Sql, Windows };

// Every member reports its own failures and then answers an empty name, false or Unknown.
class UserIdentity {
  public:
    explicit UserIdentity(SecuritySite& site) : mSite(site) {}

    // The name as first found; never refreshed, because audit records of one program run carry one name.
    std::wstring Name();

    // The SQL login that account lists are compared with: the name when the database gave it, never a Windows name
    // that stands in for one. Empty when the database does not tell.
    std::wstring SqlLogin();

    // The site's current database user, else the Windows user.
    std::wstring NameNoncached();
    std::wstring WindowsName();

    // Whether the site's connection string uses SQL instead of Windows authentication.
    bool IsSqlAuthenticationUsed();

    // The same as a ground for privileges: a site without a connection string, of which nobody can say, is Unknown.
    Authentication KnownAuthentication();

    // Whether the site's database server accepts SQL logins.
    bool IsSqlAuthenticationEnabled();

  private:
    SecuritySite& mSite;
    std::wstring DatabaseUser();

    std::wstring mCachedName;
    bool mIsCachedLogin = false;  // the database gave it
};

}  // namespace v5
