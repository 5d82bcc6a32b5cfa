// The devkit's account information and message list through their registration.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>
#include <sddl.h>
#include <shlobj.h>

#include <string>
#include <vector>

#include "V5MessageList.h"
#include "component/Client.h"

namespace v5::test {

namespace {

TEST(DevkitAccountInfo, AgreesWithWindowsAboutTheCurrentUser) {
    const auto info = CreateByName(L"V5NetUtil.AccountInfo");
    ASSERT_NE(info, nullptr);
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
    } cases[] = {
        {L"S-1-1-0", true, L"Everyone"},   {L"S-1-5-18", false, L"NT AUTHORITY\\SYSTEM"},
        {L"S-1-5-21-1-2-3-4", false, L""}, {L"S-1-", false, L""},
        {L"jsmith", false, L""},           {L"", false, L""},
    };
    const auto info = CreateByName(L"V5NetUtil.AccountInfo");
    ASSERT_NE(info, nullptr);
    for (const auto& c : cases) {
        const CallResult member = Call(info.Get(), L"IsCurrentUserMemberOfGroup", {c.sid});
        const CallResult name = Call(info.Get(), L"TranslateSidToAccountName", {c.sid});
        EXPECT_EQ(member.status, S_OK);
        EXPECT_EQ(static_cast<bool>(member.value), c.member) << std::wstring(c.sid);
        EXPECT_EQ(name.status, S_OK);
        EXPECT_EQ(Text(name.value), c.name) << std::wstring(c.sid);
    }
}

TEST(DevkitMessageList, KeepsWhatASinkReceives) {
    const auto list = CreateByName(L"V5Msgs.MessageList");
    ASSERT_NE(list, nullptr);
    ComPtr<IRaiseMsg> sink;
    ComPtr<IUnknown> ofList, ofSink;
    ASSERT_EQ(list.As(&sink), S_OK);
    EXPECT_EQ(list.As(&ofList), S_OK);
    EXPECT_EQ(sink.As(&ofSink), S_OK);
    EXPECT_EQ(ofList.Get(), ofSink.Get());  // one object

    EXPECT_EQ(sink->RaiseMsg(4, _bstr_t(L"first")), S_OK);
    EXPECT_EQ(Call(sink.Get(), L"RaiseMsg", {12292L, L"second"}).status, S_OK);
    EXPECT_EQ(static_cast<long>(Get(list.Get(), L"Count")), 2);
    const auto property = [&](const wchar_t* name, long index) {
        return Invoke(list.Get(), IdOf(list.Get(), name), DISPATCH_PROPERTYGET, {index});
    };
    EXPECT_EQ(Text(property(L"Item", 0).value), L"first");
    EXPECT_EQ(static_cast<long>(property(L"Type", 1).value), 12292);
    EXPECT_EQ(property(L"Item", 2).errorNumber, static_cast<long>(0x800A0009));
    EXPECT_EQ(property(L"Type", -1).errorNumber, static_cast<long>(0x800A0009));

    ComPtr<IEnumVARIANT> texts;
    const _variant_t enumerator = Invoke(list.Get(), DISPID_NEWENUM, DISPATCH_PROPERTYGET, {}).value;
    ASSERT_EQ(V_VT(&enumerator), VT_UNKNOWN);
    ASSERT_EQ(V_UNKNOWN(&enumerator)->QueryInterface(IID_PPV_ARGS(&texts)), S_OK);
    VARIANT items[3];
    ULONG fetched = 0;
    EXPECT_EQ(texts->Next(3, items, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 2u);
    EXPECT_EQ(Text(_variant_t(items[0], false)), L"first");
    EXPECT_EQ(Text(_variant_t(items[1], false)), L"second");

    EXPECT_EQ(Call(list.Get(), L"Clear").status, S_OK);
    EXPECT_EQ(static_cast<long>(Get(list.Get(), L"Count")), 0);
}

}  // namespace

}  // namespace v5::test
