// V5NetUtil.AccountInfo: who is running this process.
#pragma once

#include "V5NetUtil.h"
#include "V5NetUtilMembers.h"
#include "com/AutomationObject.h"

namespace v5::devkit {

class AccountInfo final : public AutomationObject<AccountInfo, IAccountInfo, ::AccountInfo> {
  public:
    static constexpr wchar_t kProgId[] = L"V5NetUtil.AccountInfo";

    STDMETHODIMP GetCurrentUserName(BSTR* userName) override;
    STDMETHODIMP GetCurrentUserSid(BSTR* sid) override;
    STDMETHODIMP IsCurrentUserMemberOfGroup(BSTR sid, VARIANT_BOOL* isMember) override;
    STDMETHODIMP IsCurrentUserAnAdministrator(VARIANT_BOOL* isAdministrator) override;
    STDMETHODIMP TranslateSidToAccountName(BSTR sid, BSTR* accountName) override;
};

}  // namespace v5::devkit
