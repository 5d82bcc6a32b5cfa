#include "security/NetUtilAccounts.h"

#include "com/BstrText.h"

namespace v5 {

std::wstring NetUtilAccounts::CurrentUserName() {
    return accountInfo_.CallText(L"GetCurrentUserName");
}

std::wstring NetUtilAccounts::CurrentUserSid() {
    return accountInfo_.CallText(L"GetCurrentUserSid");
}

bool NetUtilAccounts::IsCurrentUserMemberOfGroup(std::wstring_view sid) {
    return accountInfo_.CallLong(L"IsCurrentUserMemberOfGroup", {ToBstr(sid)}) != 0;
}

bool NetUtilAccounts::IsCurrentUserAnAdministrator() {
    return accountInfo_.CallLong(L"IsCurrentUserAnAdministrator") != 0;
}

std::wstring NetUtilAccounts::AccountNameOfSid(std::wstring_view sid) {
    return accountInfo_.CallText(L"TranslateSidToAccountName", {ToBstr(sid)});
}

}  // namespace v5
