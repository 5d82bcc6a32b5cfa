// The minimum privilege level of each restriction.
#pragma once

#include "security/Levels.h"
#include "security/SecuritySite.h"
#include "security/SecuritySwitch.h"
#include "security/UserIdentity.h"

namespace v5 {

class MinimumLevels {
  public:
    MinimumLevels(SecuritySite& site, SecuritySwitch& securitySwitch, UserIdentity& user)
        : mSite(site), mSwitch(securitySwitch), mUser(user) {}

    // The minimum that holds now. Reports its own failures and then answers the default, 54.
    PrivilegeLevel Get(RestrictionID restriction);

    // The same, but throws what it cannot read.
    PrivilegeLevel Read(RestrictionID restriction);

    // Stores a minimum, with an audit record; a minimum that is stored already is left alone. The minimum of a
    // restriction that is not configurable can be stored too, without effect. Throws SecurityProblem.
    void Set(RestrictionID restriction, PrivilegeLevel minimum);

  private:
    PrivilegeLevel ConfiguredMinimum(RestrictionID restriction);
    PrivilegeLevel StoredMinimum(RestrictionID restriction);

    SecuritySite& mSite;
    SecuritySwitch& mSwitch;
    UserIdentity& mUser;
};

}  // namespace v5
