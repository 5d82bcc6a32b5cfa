// Whether the current user may do what a restriction guards, and the password that overcomes a refusal.
#pragma once

#include <string>

#include "security/AccountLists.h"
#include "security/AlarmResetPassword.h"
#include "security/MinimumLevels.h"
#include "security/SecuritySite.h"

namespace v5 {

// Whether and how a refused user is asked for a password.
struct PasswordOffer {
    bool allowed = false;
    PasswordDialogTexts texts = {};
};

struct CheckResult {
    bool isAllowed = false;
    bool enteredMasterPassword = false;
};

class PrivilegeCheck {
  public:
    PrivilegeCheck(SecuritySite& site, AccountLists& lists, MinimumLevels& minimums, AlarmResetPassword& alarmReset)
        : mSite(site), mLists(lists), mMinimums(minimums), mAlarmReset(alarmReset) {}

    // Reports its own failures and then refuses.
    CheckResult Check(RestrictionID restriction, const PasswordOffer& offer);

  private:
    CheckResult AskForPassword(RestrictionID restriction, const PasswordDialogTexts& texts);
    CheckResult Judge(RestrictionID restriction, SecretText typed);  // the typed text is wiped on return

    SecuritySite& mSite;
    AccountLists& mLists;
    MinimumLevels& mMinimums;
    AlarmResetPassword& mAlarmReset;
};

}  // namespace v5
