#include "v5netutil/AccountInfo.h"

#include "v5netutil/Accounts.h"

namespace v5::devkit {

STDMETHODIMP AccountInfo::GetCurrentUserName(BSTR* userName) {
    return Return(userName, CurrentUserName);
}

STDMETHODIMP AccountInfo::GetCurrentUserSid(BSTR* sid) {
    return Return(sid, CurrentUserSid);
}

STDMETHODIMP AccountInfo::IsCurrentUserMemberOfGroup(BSTR sid, VARIANT_BOOL* isMember) {
    return Return(isMember, [&] { return IsCurrentUserMemberOf(std::wstring(View(sid))); });
}

STDMETHODIMP AccountInfo::IsCurrentUserAnAdministrator(VARIANT_BOOL* isAdministrator) {
    return Return(isAdministrator, IsCurrentUserAdministrator);
}

STDMETHODIMP AccountInfo::TranslateSidToAccountName(BSTR sid, BSTR* accountName) {
    return Return(accountName, [&] { return AccountNameOf(std::wstring(View(sid))); });
}

}  // namespace v5::devkit
