// Whether the current user may do what a restriction guards, and the password that overcomes a refusal.
#pragma once

#include <string>

#include "security/AccountLists.h"
#include "security/AlarmResetPassword.h"
#include "security/MinimumLevels.h"
#include "security/SecuritySite.h"

namespace v5 {

// Whether and how a refused user is asked for a password. Empty texts leave the dialog's own.
struct PasswordOffer {
    bool allowed = false;
    std::wstring message;
    std::wstring title;
};

struct CheckResult {
    bool isAllowed = false;
    bool enteredMasterPassword = false;
};

class PrivilegeCheck {
  public:
    PrivilegeCheck(SecuritySite& site, AccountLists& lists, MinimumLevels& minimums, AlarmResetPassword& alarmReset)
        : site_(site), lists_(lists), minimums_(minimums), alarmReset_(alarmReset) {}

    // Reports its own failures and then refuses.
    CheckResult Check(RestrictionID restriction, const PasswordOffer& offer);

  private:
    CheckResult AskForPassword(RestrictionID restriction, const PasswordOffer& offer);
    CheckResult Judge(RestrictionID restriction, SecretText typed);  // the typed text is wiped on return

    SecuritySite& site_;
    AccountLists& lists_;
    MinimumLevels& minimums_;
    AlarmResetPassword& alarmReset_;
};

}  // namespace v5
