// The devkit's account information and message list through their registration.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>
#include <sddl.h>
#include <shlobj.h>

#include <string>

#include "V5MessageList.h"
#include "component/Client.h"

namespace v5::test {

namespace {

TEST(DevkitAccountInfo, AgreesWithWindowsAboutTheCurrentUser) {
    const auto info = CreateByName(L"V5NetUtil.AccountInfo");
    wchar_t name[256];
    DWORD size = 256;
    ASSERT_TRUE(GetUserNameW(name, &size));
    EXPECT_EQ(Text(Call(info.Get(), L"GetCurrentUserName").value), name);

    // The way back: the account of that name has the SID that the component tells.
    std::byte sid[SECURITY_MAX_SID_SIZE];
    wchar_t domain[256];
    DWORD sidSize = sizeof(sid), domainSize = 256;
    SID_NAME_USE use = SidTypeUnknown;
    ASSERT_TRUE(LookupAccountNameW(nullptr, name, sid, &sidSize, domain, &domainSize, &use));
    wchar_t* expected = nullptr;
    ASSERT_TRUE(ConvertSidToStringSidW(sid, &expected));
    const std::wstring told = Text(Call(info.Get(), L"GetCurrentUserSid").value);
    EXPECT_EQ(told, expected);
    LocalFree(expected);
    EXPECT_EQ(Text(Call(info.Get(), L"TranslateSidToAccountName", {told.c_str()}).value),
              std::wstring(domain) + L"\\" + name);

    const auto isAdministrator = Call(info.Get(), L"IsCurrentUserAnAdministrator").value;
    EXPECT_EQ(static_cast<bool>(isAdministrator), IsUserAnAdmin() != FALSE);
    const auto inAdministrators = Call(info.Get(), L"IsCurrentUserMemberOfGroup", {L"S-1-5-32-544"}).value;
    EXPECT_EQ(static_cast<bool>(inAdministrators), IsUserAnAdmin() != FALSE);
}

TEST(DevkitAccountInfo, KnowsGroupsAndAccountsBySid) {
    const struct {
        const wchar_t* sid;
        bool member;
        const wchar_t* name;
    } cases[] = {{L"S-1-1-0", true, L"Everyone"},   {L"S-1-5-18", false, L"NT AUTHORITY\\SYSTEM"},
                 {L"S-1-5-21-1-2-3-4", false, L""}, {L"S-1-", false, L""},
                 {L"jsmith", false, L""},           {L"", false, L""}};
    const auto info = CreateByName(L"V5NetUtil.AccountInfo");
    for (const auto& c : cases) {
        EXPECT_EQ(Call(info.Get(), L"IsCurrentUserMemberOfGroup", {c.sid}).value, _variant_t(c.member)) << c.sid;
        EXPECT_EQ(Text(Call(info.Get(), L"TranslateSidToAccountName", {c.sid}).value), c.name);
    }
}

TEST(DevkitMessageList, KeepsWhatASinkReceives) {
    const auto list = CreateByName(L"V5Msgs.MessageList");
    ComPtr<IRaiseMsg> sink;
    ASSERT_EQ(list.As(&sink), S_OK);
    EXPECT_EQ(sink->RaiseMsg(4, _bstr_t(L"first")), S_OK);
    EXPECT_EQ(Call(sink.Get(), L"RaiseMsg", {12292L, L"second"}).status, S_OK);
    EXPECT_EQ(Get(list.Get(), L"Count"), _variant_t(2L));
    const auto property = [&](const wchar_t* name, long index) {
        return Invoke(list.Get(), IdOf(list.Get(), name), DISPATCH_PROPERTYGET, {index});
    };
    EXPECT_EQ(Text(property(L"Item", 0).value) + Text(property(L"Item", 1).value), L"firstsecond");
    EXPECT_EQ(property(L"Type", 1).value, _variant_t(12292L));
    EXPECT_EQ(property(L"Item", 2).errorNumber, static_cast<long>(0x800A0009));
    EXPECT_EQ(Call(list.Get(), L"Clear").status, S_OK);
    EXPECT_EQ(Get(list.Get(), L"Count"), _variant_t(0L));
}

}  // namespace

}  // namespace v5::test
