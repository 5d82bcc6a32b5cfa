#include "v5netutil/Accounts.h"

#include <windows.h>

#include <lmcons.h>
#include <sddl.h>

#include <memory>
#include <vector>

#include "com/Guard.h"

namespace v5::devkit {

namespace {

void CheckWindows(BOOL succeeded) {
    if (!succeeded) {
        Check(HRESULT_FROM_WIN32(GetLastError()));
    }
}

struct LocalMemory {
    void operator()(void* memory) const { LocalFree(memory); }
};
using SidPointer = std::unique_ptr<void, LocalMemory>;

// The SID that a text stands for; null when it stands for none. (Wine takes an empty text for S-1-0-0.)
SidPointer ParseSid(const std::wstring& text) {
    PSID sid = nullptr;
    const bool parsed = !text.empty() && ConvertStringSidToSidW(text.c_str(), &sid);
    return SidPointer(parsed ? sid : nullptr);
}

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// The process token's TOKEN_USER, with the SID that it points to.
std::vector<std::byte> TokenUserOfProcess() {
    HANDLE handle = nullptr;
    CheckWindows(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &handle));
    const std::unique_ptr<void, HandleCloser> token(handle);
    DWORD size = 0;
    GetTokenInformation(handle, TokenUser, nullptr, 0, &size);  // fails, and tells the size
    std::vector<std::byte> user(size);
    CheckWindows(GetTokenInformation(handle, TokenUser, user.data(), size, &size));
    return user;
}

bool IsMemberOf(PSID group) {
    BOOL member = FALSE;
    CheckWindows(CheckTokenMembership(nullptr, group, &member));
    return member != FALSE;
}

}  // namespace

std::wstring CurrentUserName() {
    wchar_t name[UNLEN + 1];
    auto size = static_cast<DWORD>(std::size(name));
    CheckWindows(GetUserNameW(name, &size));
    return name;
}

std::wstring CurrentUserSid() {
    const std::vector<std::byte> user = TokenUserOfProcess();
    wchar_t* text = nullptr;
    CheckWindows(ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text));
    const std::unique_ptr<wchar_t, LocalMemory> owner(text);
    return text;
}

bool IsCurrentUserMemberOf(const std::wstring& sid) {
    const SidPointer group = ParseSid(sid);
    return group != nullptr && IsMemberOf(group.get());
}

bool IsCurrentUserAdministrator() {
    std::byte administrators[SECURITY_MAX_SID_SIZE];
    DWORD size = sizeof(administrators);
    CheckWindows(CreateWellKnownSid(WinBuiltinAdministratorsSid, nullptr, administrators, &size));
    return IsMemberOf(administrators);
}

std::wstring AccountNameOf(const std::wstring& sid) {
    const SidPointer account = ParseSid(sid);
    if (account == nullptr) {
        return {};
    }
    wchar_t name[UNLEN + 1];
    wchar_t domain[DNLEN + UNLEN + 1];  // well-known groups have long "domains", e.g. of services
    auto nameSize = static_cast<DWORD>(std::size(name));
    auto domainSize = static_cast<DWORD>(std::size(domain));
    SID_NAME_USE use = SidTypeUnknown;
    if (!LookupAccountSidW(nullptr, account.get(), name, &nameSize, domain, &domainSize, &use)) {
        if (GetLastError() == ERROR_NONE_MAPPED) {
            return {};
        }
        CheckWindows(FALSE);
    }
    return domain[0] == L'\0' ? name : std::wstring(domain) + L'\\' + name;
}

}  // namespace v5::devkit
