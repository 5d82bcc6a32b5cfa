// The product's user security for one site: every operation of the public class NimboSecurity, without automation.
#pragma once

#include <string_view>

#include "security/AccountLists.h"
#include "security/AlarmResetPassword.h"
#include "security/Levels.h"
#include "security/MinimumLevels.h"
#include "security/PrivilegeCheck.h"
#include "security/SecuritySite.h"
#include "security/SecuritySwitch.h"
#include "security/UserIdentity.h"

namespace v5 {

// No member throws: each reports its failures to the message sink and answers its default, which is false or empty
// unless it says otherwise. Nothing read from the database is kept from one call to the next but the user's name.
class Security {
  public:
    // Both must outlive the object.
    Security(SecurityHost& host, MessageSink& messages) : mSite(host, messages) {}

    // Connects to the site's databases, in place of an earlier connection. Answers whether they are ready.
    bool Setup(const SiteConnection& connection, std::wstring_view applicationName);
    void Teardown();
    void ClearLogonMemory();

    // Default: EnabledOther.
    SecurityStatus Status() { return mSwitch.Status(); }
    void SetEnabled(bool enabled);

    // Default: the level found so far, at least 50.
    PrivilegeLevel UserLevel() { return mLists.UserLevel(); }
    CheckResult Check(RestrictionID restriction, const PasswordOffer& offer) {
        return mCheck.Check(restriction, offer);
    }

    bool SetAlarmResetPassword(std::wstring_view scrambled);

    // Fills `lists`, which is emptied first. An unparsable document leaves it empty and is no failure.
    bool GetAccountLists(AccountListTexts& lists);

    // Replaces all three lists, level 1 first; stops at the first that cannot be replaced.
    bool SetAccountLists(const AccountListTexts& lists, bool allowPassword);

    // Default: 54.
    PrivilegeLevel MinimumLevel(RestrictionID restriction) { return mMinimums.Get(restriction); }
    bool SetMinimumLevel(RestrictionID restriction, PrivilegeLevel minimum);

    UserIdentity& User() { return mUser; }

  private:
    void RequireChangeable(std::wstring_view noDatabase, std::wstring_view notEnabled);

    SecuritySite mSite;
    UserIdentity mUser{mSite};
    SecuritySwitch mSwitch{mSite, mUser};
    AccountLists mLists{mSite, mUser};
    MinimumLevels mMinimums{mSite, mSwitch, mUser};
    AlarmResetPassword mAlarmReset{mSite, mUser};
    PrivilegeCheck mCheck{mSite, mLists, mMinimums, mAlarmReset};
};

}  // namespace v5
