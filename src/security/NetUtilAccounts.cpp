#include "security/NetUtilAccounts.h"

#include "com/Values.h"

namespace v5 {

std::wstring NetUtilAccounts::CurrentUserName() {
    return mAccountInfo.CallText(L"GetCurrentUserName");
}

std::wstring NetUtilAccounts::CurrentUserSid() {
    return mAccountInfo.CallText(L"GetCurrentUserSid");
}

bool NetUtilAccounts::IsCurrentUserMemberOfGroup(std::wstring_view sid) {
    return mAccountInfo.CallLong(L"IsCurrentUserMemberOfGroup", {ToBstr(sid)}) != 0;
}

bool NetUtilAccounts::IsCurrentUserAnAdministrator() {
    return mAccountInfo.CallLong(L"IsCurrentUserAnAdministrator") != 0;
}

std::wstring NetUtilAccounts::AccountNameOfSid(std::wstring_view sid) {
    return mAccountInfo.CallText(L"TranslateSidToAccountName", {ToBstr(sid)});
}

}  // namespace v5
