// The account lists of levels 1, 2 and 3, and the privilege level that they give the current user.
#pragma once

#include <string>
#include <string_view>

#include "security/Levels.h"
#include "security/SecuritySite.h"
#include "security/UserIdentity.h"

namespace v5 {

// The three lists as one text each: entries joined by ",", a Windows account as "name [SID]", a login name as it is.
struct AccountListTexts {
    std::wstring level1;
    std::wstring level2;
    std::wstring level3;
};

class AccountLists {
  public:
    AccountLists(SecuritySite& site, UserIdentity& user) : mSite(site), mUser(user) {}

    // The current user's level: that of the highest list with the user or one of the user's groups in it, or of a
    // Windows administrator. Reports its own failures and then answers the level found so far.
    PrivilegeLevel UserLevel();

    // The stored lists; empty texts when there is no document, or none that parses (which is reported).
    AccountListTexts Read();

    // Replaces the list of one level (51, 52 or 55) by the items of `list`, SIDs or login names separated by ",". A
    // list that reads the same afterwards is not stored. Throws SecurityProblem.
    void Replace(PrivilegeLevel level, std::wstring_view list);

    // Replaces all three, level 1 first; stops at the first that cannot be replaced. Lists that no document can hold
    // are refused before any is replaced. Throws SecurityProblem.
    void Replace(const AccountListTexts& lists);

  private:
    struct ListOfLevel;
    static const ListOfLevel kLists[];

    // The level by list alone. `accounts` is null when the user is a SQL login.
    PrivilegeLevel ListedLevel(XmlDocument& xml, Accounts* accounts);

    SecuritySite& mSite;
    UserIdentity& mUser;
};

}  // namespace v5
