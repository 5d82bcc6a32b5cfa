// Windows accounts as seen by this process. Every function throws AutomationError when Windows refuses.
#pragma once

#include <string>

namespace v5::devkit {

// Account name of the process's user, without its domain.
std::wstring CurrentUserName();

// SID of the process's user as text, "S-1-5-…".
std::wstring CurrentUserSid();

// Whether the process's user is an enabled member of the group; false for text that is not a SID.
bool IsCurrentUserMemberOf(const std::wstring& sid);

// Whether the process's user is an enabled member of the local administrators' group.
bool IsCurrentUserAdministrator();

// "DOMAIN\name", or the name alone for an account without a domain; empty when no account has this SID or the text
// is not a SID.
std::wstring AccountNameOf(const std::wstring& sid);

}  // namespace v5::devkit
