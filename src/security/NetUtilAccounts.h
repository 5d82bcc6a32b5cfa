// Windows accounts through the account information component, V5NetUtil, late-bound.
#pragma once

#include "com/LateBound.h"
#include "security/SiteDatabase.h"

namespace v5 {

class NetUtilAccounts : public Accounts {
  public:
    // Throws AutomationError when the component cannot be created.
    NetUtilAccounts() : mAccountInfo(L"V5NetUtil.AccountInfo") {}

    std::wstring CurrentUserName() override;
    std::wstring CurrentUserSid() override;
    bool IsCurrentUserMemberOfGroup(std::wstring_view sid) override;
    bool IsCurrentUserAnAdministrator() override;
    std::wstring AccountNameOfSid(std::wstring_view sid) override;

  private:
    LateBound mAccountInfo;
};

}  // namespace v5
