// NimboSecurity through its registration, on the devkit's database and the machine's own accounts. What the machine
// cannot play (other accounts, faults) is tested in unit/.
#include <windows.h>
#include <gtest/gtest.h>

#include <comutil.h>

#include <string>
#include <vector>

#include "V5Msgs.h"
#include "V5Strings.h"
#include "component/Client.h"
#include "component/DatabaseFile.h"
#include "component/EventRecorder.h"

namespace v5::test {

using namespace V5Strings;  // the published enumerations

namespace {

constexpr wchar_t kSite[] = L"SITE1";

class SecurityComponent : public testing::Test {
  protected:
    ~SecurityComponent() override {
        if (mSecurity) {
            Do(L"Teardown");
        }
    }

    // A new object, connected to the site.
    bool Connect(const std::wstring& connectionString) {
        mSecurity = CreateByName(L"V5Strings.NimboSecurity");
        return static_cast<bool>(Do(L"Setup", {kSite, L"EN", connectionString.c_str(), L"", L"Component tests", true}));
    }

    // No member of the class raises.
    _variant_t Do(const wchar_t* member, const std::vector<_variant_t>& arguments = {}) {
        const CallResult result = Call(mSecurity.Get(), member, arguments);
        EXPECT_EQ(result.status, S_OK) << member;
        return result.value;
    }
    long Number(const wchar_t* member, const std::vector<_variant_t>& arguments = {}) { return Do(member, arguments); }
    bool True(const wchar_t* member, const std::vector<_variant_t>& arguments = {}) {
        return static_cast<bool>(Do(member, arguments));
    }
    long Status() { return Get(mSecurity.Get(), L"SecurityEnabledStatus"); }

    // "kind tag text" of every record of security in the site's event log.
    std::vector<std::wstring> AuditTrail() {
        return OtherProgram(mFile.Path())
            .Rows("SELECT kind, tag, text FROM event_log WHERE category = 'SECURITY' AND source = '' ORDER BY number");
    }

    DatabaseFile mFile;
    ComPtr<IDispatch> mSecurity;
};

}  // namespace

TEST_F(SecurityComponent, AnAdministratorSetsUpAFreshSite) {
    ASSERT_TRUE(Connect(mFile.WindowsLogin()));
    const EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
    const auto info = CreateByName(L"V5NetUtil.AccountInfo");
    const std::wstring user = Text(Call(info.Get(), L"GetCurrentUserName").value);
    const std::wstring sid = Text(Call(info.Get(), L"GetCurrentUserSid").value);
    ASSERT_TRUE(static_cast<bool>(Call(info.Get(), L"IsCurrentUserAnAdministrator").value));

    EXPECT_EQ(Status(), Enabled_ByDefault);
    EXPECT_EQ(Number(L"GetUserPrivilegeLevel"), PrivLevel_OSAdmin);
    EXPECT_TRUE(True(L"CheckUserPrivilegeLevel", {301L, false}));
    Do(L"EnableSecurity");
    EXPECT_EQ(Status(), Enabled_Configured);
    EXPECT_EQ(Number(L"GetMinPrivilegeLevelForRID", {301L}), 54);
    EXPECT_FALSE(True(L"CheckUserPrivilegeLevel", {301L, false}));
    EXPECT_TRUE(True(L"CheckUserPrivilegeLevel", {398L, false}));
    EXPECT_TRUE(True(L"SetMinPrivilegeLevelForPID", {301L, 52L}));
    EXPECT_TRUE(True(L"CheckUserPrivilegeLevel", {301L, false}));

    EXPECT_TRUE(True(L"SetSidsForAllPrivilegeLevels", {L"", L"jsmith", sid.c_str(), false}));
    EXPECT_EQ(Number(L"GetUserPrivilegeLevel"), PrivLevel_3High);
    _variant_t level1, level2, level3;
    EXPECT_TRUE(True(L"GetSidsForPrivilegeLevels", {ByReference(level1), ByReference(level2), ByReference(level3)}));
    const std::wstring account = Text(Call(info.Get(), L"TranslateSidToAccountName", {sid.c_str()}).value);
    const std::wstring listed = account + L" [" + sid + L"]";
    EXPECT_EQ(Text(level1) + L"|" + Text(level2) + L"|" + Text(level3), L"|jsmith|" + listed);
    EXPECT_TRUE(True(L"SetManualAlarmResetPwd", {L"1234567"}));
    EXPECT_EQ(Text(Do(L"GetCurrentUserName")), user);
    Do(L"ClearLogonMemory");
    Do(L"DisableSecurity");

    const std::wstring by = L"'" + user + L"'";
    EXPECT_EQ(AuditTrail(), (std::vector<std::wstring>{
                                L"2 STR-0105 Vantor security enabled by " + by,
                                L"1 STR-0139 RID 301: min privilege level changed from '' to '52' by " + by + L" ",
                                L"1 STR-0128 Changed L2 SID list " + user + L": original=\"\" new=\"jsmith\"",
                                L"2 STR-0144 Account list for Vantor Level 2 was changed by " + by,
                                L"1 STR-0128 Changed L3 SID list " + user + L": original=\"\" new=\"" + listed + L"\"",
                                L"2 STR-0144 Account list for Vantor Level 3 was changed by " + by,
                                L"2 STR-0117 Manual alarm reset password changed by " + by,
                                L"2 STR-0105 Vantor security disabled by " + by}));
    EXPECT_TRUE(events.messages.empty());
}

TEST_F(SecurityComponent, SqlLoginsAreJudgedByName) {
    ASSERT_TRUE(Connect(mFile.WindowsLogin()));
    Do(L"EnableSecurity");
    EXPECT_FALSE(True(L"IsSqlAuthenticationUsedInConnStrings"));
    EXPECT_TRUE(True(L"IsSqlAuthenticationEnabledInSqlServer"));
    ASSERT_TRUE(True(L"SetSidsForAllPrivilegeLevels", {L"Operator,jSmith", L"JSMITH", L"S-1-1-0", false}));
    const struct {
        const wchar_t* login;
        long level;
    } cases[] = {{L"jsmith", PrivLevel_2}, {L"OPERATOR", PrivLevel_1}, {L"sa", PrivLevel_None}};
    for (const auto& c : cases) {
        ASSERT_TRUE(Connect(mFile.SqlLogin(c.login))) << c.login;
        const EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
        EXPECT_TRUE(True(L"IsSqlAuthenticationUsedInConnStrings"));
        EXPECT_EQ(Text(Do(L"GetCurrentUserNameNoncached")), c.login);
        EXPECT_EQ(Number(L"GetUserPrivilegeLevel"), c.level) << c.login;
        EXPECT_FALSE(True(L"SetManualAlarmResetPwd", {L"1"}));
        Do(L"DisableSecurity");
        EXPECT_EQ(events.messages,
                  (std::vector<RecordedMessage>{
                      {12292, L"Insufficient privileges to change 'manual alarm reset password' [STR-015]"},
                      {12292, L"Insufficient privileges [STR-0102]"}}));
        EXPECT_EQ(Status(), Enabled_Configured);
    }
}

TEST_F(SecurityComponent, MessagesOfTheDatabaseAndOfSendersPassUnchanged) {
    mSecurity = CreateByName(L"V5Strings.NimboSecurity");
    const EventRecorder events(mSecurity.Get(), DIID___NimboSecurity);
    EXPECT_FALSE(True(L"Setup", {kSite, L"EN", L"Data Source=C:\\no such folder\\x.db;User ID=sa", L"", L"T", true}));
    ASSERT_EQ(events.messages.size(), 2u);
    EXPECT_EQ(events.messages[0].text.substr(0, 5), L"DBIL:");
    EXPECT_EQ(events.messages[1], (RecordedMessage{4, L"Can't setup DBIL [STR-0097]"}));

    ComPtr<IRaiseMsg> sink;
    ASSERT_EQ(mSecurity.As(&sink), S_OK);
    EXPECT_EQ(sink->RaiseMsg(-77, _bstr_t(L"as it comes\r\n\u00E9")), S_OK);
    EXPECT_EQ(sink->RaiseMsg(3, nullptr), S_OK);
    const BSTR withNul = SysAllocStringLen(L"a\0b", 3);
    EXPECT_EQ(sink->RaiseMsg(4, withNul), S_OK);
    SysFreeString(withNul);
    EXPECT_EQ(Call(sink.Get(), L"RaiseMsg", {5L, L"late"}).status, S_OK);
    const std::vector<RecordedMessage> passed(events.messages.begin() + 2, events.messages.end());
    EXPECT_EQ(passed, (std::vector<RecordedMessage>{
                          {-77, L"as it comes\r\n\u00E9"}, {3, L""}, {4, {L"a\0b", 3}}, {5, L"late"}}));
    ComPtr<IUnknown> object, ofSink;
    EXPECT_EQ(mSecurity.As(&object), S_OK);
    EXPECT_EQ(sink.As(&ofSink), S_OK);
    EXPECT_EQ(object.Get(), ofSink.Get()) << "one object";
}

}  // namespace v5::test
