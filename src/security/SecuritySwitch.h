// Whether security is switched on for the site.
#pragma once

#include "security/Levels.h"
#include "security/SecuritySite.h"
#include "security/UserIdentity.h"

namespace v5 {

class SecuritySwitch {
  public:
    SecuritySwitch(SecuritySite& site, UserIdentity& user) : mSite(site), mUser(user) {}

    // Reports its own failures and then answers EnabledOther.
    SecurityStatus Status();

    // The same, but throws what it cannot read: for decisions in which "unknown" must not pass as "switched on".
    SecurityStatus ReadStatus();

    // Switches security on or off for a user of privilege level `held`, with a history element and an audit record.
    // Throws SecurityProblem when the user may not, and when the document cannot be read or stored.
    void Set(bool enabled, PrivilegeLevel held);

  private:
    SecuritySite& mSite;
    UserIdentity& mUser;
};

}  // namespace v5
