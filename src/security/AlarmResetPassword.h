// The manual alarm-reset password of the site, which opens the manual-confirmation restrictions. Only its scrambled
// form is ever seen here.
#pragma once

#include <string>
#include <string_view>

#include "security/Levels.h"
#include "security/SecuritySite.h"
#include "security/UserIdentity.h"

namespace v5 {

class AlarmResetPassword {
  public:
    AlarmResetPassword(SecuritySite& site, UserIdentity& user) : mSite(site), mUser(user) {}

    // The scrambled password, or a text that no scrambled password equals when there is none.
    std::wstring Stored();

    // Stores a scrambled password for a user of privilege level `held`, with a history element and an audit record.
    // Throws SecurityProblem.
    void Set(std::wstring_view scrambled, PrivilegeLevel held);

  private:
    SecuritySite& mSite;
    UserIdentity& mUser;
};

}  // namespace v5
