// The security rules beside a document in memory. What the system's parser makes of documents:
// windows/SecurityDocumentsTest.cpp.
#include "security/Security.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <tuple>

#include "FakeSecurityHost.h"
#include "ProductConstants.h"
#include "security/AccountLists.h"
#include "security/Scrambler.h"

namespace v5 {

namespace {

struct SecurityTest : testing::Test, SecurityBench {
    void PutNonsense() {
        for (const auto* format : {&kSwitchDocument, &kAccountsDocument, &kAlarmResetDocument, &kMinimumsDocument}) {
            host.machine.rows[std::wstring(format->key)] = L"?";
        }
    }
};

// The development passwords in devkit/README.md: the lines "| <plain> | <number of digits> |", plain text in backticks.
std::vector<std::wstring> DocumentedMasterPasswords() {
    std::ifstream readme(V5_SOURCE_DIR "/devkit/README.md");
    std::vector<std::wstring> passwords;
    for (std::string line; std::getline(readme, line);) {
        const size_t end = line.find("` | ");
        if (line.starts_with("| `") && end != std::string::npos && line.find(" digits |") != std::string::npos) {
            passwords.emplace_back(line.begin() + 3, line.begin() + static_cast<std::ptrdiff_t>(end));
        }
    }
    return passwords;
}

// What each change says to whom it is not granted and where it cannot be done, what it records, and what it stores.
struct Change {
    bool (*run)(Security&);
    const wchar_t *refused, *disabled, *unparsable, *unsaved, *unaudited, *record;
    const DocumentFormat& format;
    const wchar_t* stored;
};
const Change kChanges[] = {
    {[](Security& security) { return security.SetEnabled(false), true; }, L"12292 Insufficient privileges [STR-0102]\n",
     nullptr, L"4 Can't parse XML [STR-0100]\n4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0103]\n",
     L"4 Can't save XML [STR-0104]\n", L"4 Can't write audit record [STR-0105]\n",
     L"STR-0105 SECURITY 2 Vantor security disabled by 'Operator7'\n", kSwitchDocument,
     L"<Enabled>0</Enabled><History|action=Disabled|tstamp=2014-03-05 14:07:09|by=Operator7></History>"},
    {[](Security& security) { return security.SetMinimumLevel(301, 51); },
     L"4 Insufficient privileges to change password level [STR-0133]\n",
     L"4 Security features are not enabled [STR-0135]\n",
     L"4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0100]\n4 Can't parse XML [STR-0137]\n",
     L"4 Can't save XML [STR-0138]\n", L"4 Can't write audit record [STR-0139]\n",
     L"STR-0139 SECURITY 1 RID 301: min privilege level changed from '' to '51' by 'Operator7' \n", kMinimumsDocument,
     L"<MinPrivLevel|rid=301>51</MinPrivLevel>"},
    {[](Security& security) { return security.SetAlarmResetPassword(L"123"); },
     L"12292 Insufficient privileges to change 'manual alarm reset password' [STR-015]\n", nullptr,
     L"4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0116]\n", L"4 Can't save XML [STR-0143]\n",
     L"4 Can't write audit record [STR-0117]\n",
     L"STR-0117 SECURITY 2 Manual alarm reset password changed by 'Operator7'\n", kAlarmResetDocument,
     L"<ManualAlarmResetPwd>123</ManualAlarmResetPwd><History|tstamp=2014-03-05 14:07:09|by=Operator7></History>"},
    {[](Security& security) {
         const AccountListTexts lists = {L"", L" S-1-9,,anna", L"otto"};
         return security.SetAccountLists(lists, false);
     },
     L"4 Insufficient privileges to set privilege level [STR-0156]\n",
     L"4 Security features are not enabled [STR-0158]\n",
     L"4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0100]\n4 Can't parse XML [STR-0126]\n",
     L"4 Can't save XML [STR-0127]\n", L"4 Can't write audit record [STR-0128]\n",
     L"STR-0128 SECURITY 1 Changed L2 SID list Operator7: original=\"\" new=\"PLANT\\Op [S-1-9],anna\"\n"
     L"STR-0144 SECURITY 2 Account list for Vantor Level 2 was changed by 'Operator7'\n"
     L"STR-0128 SECURITY 1 Changed L3 SID list Operator7: original=\"\" new=\"otto\"\n"
     L"STR-0144 SECURITY 2 Account list for Vantor Level 3 was changed by 'Operator7'\n",
     kAccountsDocument,
     L"<L2|name=PLANT\\Op>S-1-9</L2><L2>anna</L2><History|level=52|tstamp=2014-03-05 14:07:09|old=|new=PLANT\\Op "
     L"[S-1-9],anna|by=Operator7></History><L3>otto</L3><History|level=55|tstamp=2014-03-05 14:07:09|old=|new=otto|by="
     L"Operator7></History>"}};

}  // namespace

TEST_F(SecurityTest, SetupStopsAtTheStepThatFails) {
    const std::tuple<const char*, const wchar_t*, size_t> cases[] = {
        {"NewDatabase", L"Can't setup DBIL [STR-0095]", 1},
        {"SetApplicationName", L"Can't setup DBIL [STR-0095]", 2},
        {"Initialise", L"Can't setup DBIL [STR-0096]", 3},
        {"OpenSite", L"Can't setup DBIL [STR-0097]", 4}};
    for (const auto& [failing, message, calls] : cases) {
        host.machine.failing = failing;
        host.machine.calls.clear();
        EXPECT_FALSE(Connect()) << failing;
        EXPECT_EQ(messages.Take(), L"4 " + std::wstring(message) + L"\n");
        EXPECT_EQ(host.machine.calls.size(), calls) << failing;
    }
    host.machine.failing.clear();
    EXPECT_TRUE(Connect());
    EXPECT_EQ(messages.Take(), L"");
    host.machine.failing = "Close";
    security.Teardown();
    EXPECT_EQ(messages.Take(), L"4 -2147467259, it broke\n");
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther) << "the database is gone all the same";
    host.machine.failing.clear();
    EXPECT_TRUE(Connect());
    host.machine.failing = "NewDatabase";
    messages.Take();
    EXPECT_FALSE(Connect());
    security.Status();
    EXPECT_EQ(messages.Take(), L"4 Can't setup DBIL [STR-0095]\n4 DB not available [STR-0099]\n");
}

TEST_F(SecurityTest, WhatChangesSayAndRecord) {
    const std::pair<std::function<void()>, const wchar_t * Change::*> situations[] = {
        {[&] { host.machine.isAdministrator = false; }, &Change::refused},
        {[&] { Put(kSwitchDocument, L"<Enabled>0</Enabled>"); }, &Change::disabled},
        {[&] { PutNonsense(); }, &Change::unparsable},
        {[&] { host.machine.failing = "WriteLookup"; }, &Change::unsaved},
        {[&] { host.machine.windowsUser = L"bo\x1b"; }, &Change::unsaved},  // whom no document can name
        {[&] { host.machine.failing = "WriteEvent"; }, &Change::unaudited},
        {[] {}, nullptr},
    };
    for (const Change& change : kChanges) {
        change.run(security);  // without a connection nobody has a level
        EXPECT_EQ(messages.Take(),
                  (&change == kChanges ? L"4 DB not available [STR-0099]\n" : L"") + std::wstring(change.refused));
        for (const auto& [prepare, says] : situations) {
            const wchar_t* const refusal = says != nullptr ? change.*says : L"";
            host.machine = {};
            host.machine.isAdministrator = true;
            host.machine.accountNames = {{L"S-1-9", L"PLANT\\Op"}};
            prepare();
            const bool isUnnamed = host.machine.windowsUser == L"bo\x1b" && &change == &kChanges[1];
            if (refusal == nullptr || isUnnamed) {  // the document of minimums names no user
                continue;
            }
            SCOPED_TRACE(testing::PrintToString(std::wstring(refusal)));
            Security fresh(host, messages);  // which has cached no user's name
            fresh.Setup(kTestConnection, L"Test");
            const auto rows = host.machine.rows;
            change.run(fresh);
            EXPECT_EQ(messages.Take(), refusal);
            EXPECT_EQ(host.machine.log, says != nullptr ? L"" : change.record);
            for (const auto& [key, value] : host.machine.rows) {
                const bool isSame = value == (rows.contains(key) ? rows.at(key) : L"");
                EXPECT_TRUE(isSame || says == nullptr) << "a refused change changes nothing";
            }
            if (says == nullptr) {
                EXPECT_EQ(TextOfStored(host.machine.rows[std::wstring(change.format.key)]),
                          L"<root>" + std::wstring(change.stored) + L"</root>");
            }
        }
    }
    ASSERT_TRUE(Connect());
    host.machine.log.clear();
    Put(kSwitchDocument, L"<Other>0</Other>");
    security.SetEnabled(true);
    EXPECT_EQ(host.machine.log, L"STR-0105 SECURITY 2 Vantor security enabled by 'Operator7'\n");
    EXPECT_EQ(TextOfStored(host.machine.rows[std::wstring(kSwitchDocument.key)]),
              L"<root><Other>0</Other><Enabled>1</Enabled><History|action=Enabled|tstamp=2014-03-05 "
              L"14:07:09|by=Operator7></History>"
              L"</root>");
    EXPECT_FALSE(security.SetMinimumLevel(301, 53));
    EXPECT_EQ(messages.Take(), L"4 Invalid value [STR-0136]\n");
    for (const wchar_t* bad : {L"bo\x1b", L"bo\xFFFE", L"bo\xD800", L"b\ro"}) {
        EXPECT_FALSE(security.SetAlarmResetPassword(bad));
        EXPECT_FALSE(security.SetAccountLists({bad, L"", L""}, false));
        EXPECT_FALSE(security.SetAccountLists({L"anna", L"", bad}, false));
        EXPECT_EQ(messages.Take(), std::wstring(kChanges[2].unsaved) + kChanges[3].unsaved + kChanges[3].unsaved);
    }
}

TEST_F(SecurityTest, WhatCannotBeReadAnswersItsDefault) {
    const auto answers = [&] {
        std::wstring all;
        const auto add = [&](const auto& answer) {
            all += std::to_wstring(static_cast<int>(answer)) + L"\n" + messages.Take();
        };
        add(security.Status());
        add(security.UserLevel());
        add(security.MinimumLevel(301));
        host.machine.typed = {L"..garbage.."};
        add(security.Check(231, {.allowed = true}).isAllowed);
        AccountListTexts lists = {L"a", L"b", L"c"};
        add(security.GetAccountLists(lists));
        EXPECT_EQ(lists.level1 + lists.level2 + lists.level3, L"");
        add(security.User().IsSqlAuthenticationUsed());
        add(security.User().NameNoncached() == L"Operator7");
        host.machine.typed = {DocumentedMasterPasswords().at(0)};
        add(security.SetAccountLists({}, true));
        return all;
    };
    host.machine.isAdministrator = true;
    EXPECT_EQ(answers(),
              L"0\n4 DB not available [STR-0099]\n50\n54\n4 DB not available [STR-0099]\n0\n"
              L"0\n4 91, Object variable or With block variable not set\n"
              L"0\n4 91, Object variable or With block variable not set\n"
              L"1\n4 STR-0150: 91, Object variable or With block variable not set\n"
              L"0\n4 User database not available [STR-0157]\n");
    Connect();
    PutNonsense();
    EXPECT_EQ(answers(),
              L"0\n4 Can't parse XML [STR-0100]\n53\n4 Can't parse XML [STR-0110]\n"
              L"54\n4 Can't parse XML [STR-0100]\n4 Can't parse XML [STR-0130]\n"
              L"0\n4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0113]\n"
              L"1\n4 Can't parse XML [STR-0119]\n0\n1\n0\n" +
                  std::wstring(kChanges[3].unparsable));
    security.Teardown();
    EXPECT_EQ(messages.Take(), L"");
}

TEST_F(SecurityTest, TheFirstNameStaysAndTheNoncachedNameFollows) {
    host.machine.sqlUser = L"jsmith";
    ASSERT_TRUE(Connect());
    EXPECT_EQ(security.User().SqlLogin(), L"jsmith");
    host.machine.sqlUser = L"akumar";
    EXPECT_EQ(security.User().SqlLogin() + L" " + security.User().Name() + L" " + security.User().NameNoncached(),
              L"jsmith jsmith akumar");
    EXPECT_TRUE(security.User().IsSqlAuthenticationUsed() && !security.User().IsSqlAuthenticationEnabled());
    host.machine.allowsSqlLogins = true;
    EXPECT_TRUE(security.User().IsSqlAuthenticationEnabled());
    host.machine.failing = "CurrentUserName";
    EXPECT_EQ(security.User().NameNoncached(), L"Operator7");
    EXPECT_EQ(messages.Take(), L"4 STR-0150: -2147467259, it broke\n");
    host.machine.failing = "NewAccounts";
    EXPECT_EQ(security.User().WindowsName(), L"");
}

TEST_F(SecurityTest, StatusOfStoredTexts) {
    ASSERT_TRUE(Connect());
    const std::tuple<const wchar_t*, SecurityStatus, const wchar_t*> cases[] = {
        {L"<Enabled>True</Enabled>", SecurityStatus::EnabledConfigured, L""},
        {L"<Enabled> -1 </Enabled>", SecurityStatus::EnabledConfigured, L""},
        {L"<Enabled>false</Enabled>", SecurityStatus::DisabledConfigured, L""},
        {L"<Enabled>0</Enabled>", SecurityStatus::DisabledConfigured, L""},
        {L"<Other>0</Other>", SecurityStatus::EnabledByDefault, L""},
        {L"<Enabled>perhaps</Enabled>", SecurityStatus::EnabledOther, L"4 13, Type mismatch\n"}};
    for (const auto& [xml, status, says] : cases) {
        Put(kSwitchDocument, xml);
        EXPECT_EQ(security.Status(), status) << testing::PrintToString(xml);
        EXPECT_EQ(messages.Take(), says);
    }
    host.machine.rows[std::wstring(kSwitchDocument.key)] = L"   ";
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledByDefault);
}

TEST_F(SecurityTest, LevelsFromTheAccountLists) {
    const std::tuple<const wchar_t*, bool, const wchar_t*, PrivilegeLevel> cases[] = {
        {L"<L1>S-1-5-21-7</L1><L3>S-1-5-21-7</L3>", false, L"", 55},
        {L"<L2>\r\n  s-1-5-21-7 </L2>", false, L"", 52},
        {L"<L1></L1><L1> </L1><L1>S-1-9-99</L1><L1>S-1-5-32-545</L1>", false, L"", 51},
        {L"<L1>S-1-5-21-7</L1>", true, L"", 53},
        {L"<L2>S-1-5-21-7</L2>", true, L"", 53},
        {L"<L3>S-1-5-32-545</L3>", true, L"", 55},
        {L"<L3>S-1-5-21-77</L3><L3>Operator7</L3>", false, L"", 50},
        {L"<L3>S-1-5-21-7</L3><L2>jSmith</L2>", true, L"JSMITH", 52},
        {L"<L3>S-1-5-21-7</L3>", true, L"jsmith", 50}};
    host.machine.groups = {L"S-1-5-32-545"};
    for (const auto& [lists, administrator, sqlUser, level] : cases) {
        host.machine.isAdministrator = administrator;
        host.machine.sqlUser = sqlUser;
        Put(kAccountsDocument, lists);
        Security fresh(host, messages);  // the user's name is cached
        fresh.Setup(kTestConnection, L"Test");
        EXPECT_EQ(fresh.UserLevel(), level) << testing::PrintToString(lists);
    }
    EXPECT_EQ(messages.Take(), L"");
}

TEST_F(SecurityTest, MinimumsStoredAndRejected) {
    ASSERT_TRUE(Connect());
    Put(kSwitchDocument, L"<Enabled>1</Enabled>");
    std::vector<std::tuple<std::wstring, PrivilegeLevel, bool>> cases = {
        {L"\n 33 ", 33, true}, {L"5.2E1", 52, true}, {L"1e300", 54, false}, {L"fifty", 54, true}, {L"", 54, true}};
    for (int hundredths = 4900; hundredths < 5800; ++hundredths) {  // only a whole level is one
        const int level = hundredths / 100;
        const bool isLevel = hundredths % 100 == 0 && std::set{50, 51, 52, 54, 55, 56}.contains(level);
        cases.emplace_back(std::to_wstring(level) + L"." + std::to_wstring(hundredths % 100 + 100).substr(1),
                           isLevel ? level : 54, isLevel);
    }
    for (const auto& [text, minimum, isQuiet] : cases) {
        Put(kMinimumsDocument,
            L"<MinPrivLevel|rid=398>50</MinPrivLevel><MinPrivLevel|rid=301>" + text + L"</MinPrivLevel>");
        EXPECT_EQ(security.MinimumLevel(301), minimum) << testing::PrintToString(text);
        EXPECT_EQ(messages.Take(), isQuiet ? L"" : L"4 Invalid value for RID 301 [STR-0131]\n");
        EXPECT_EQ(security.MinimumLevel(398), 55) << "a stored entry for a fixed restriction is ignored";
        EXPECT_EQ(security.MinimumLevel(302), 54);
    }
    EXPECT_EQ(security.MinimumLevel(399), 54);
    Put(kSwitchDocument, L"<Enabled>0</Enabled>");
    EXPECT_EQ(security.MinimumLevel(399), 50);
    EXPECT_EQ(security.MinimumLevel(301), 50);
    EXPECT_EQ(security.MinimumLevel(251), 54);
}

TEST_F(SecurityTest, AFreshSiteIsOpenExceptForFixedMinimums) {
    ASSERT_TRUE(Connect());
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledByDefault);
    const std::pair<RestrictionID, PrivilegeLevel> cases[] = {{250, 56}, {251, 54}, {398, 55}, {312, 54}, {403, 56},
                                                              {405, 54}, {231, 33}, {233, 33}, {399, 50}, {301, 50},
                                                              {0, 50},   {-7, 50},  {53, 50}};
    for (const auto& [restriction, minimum] : cases) {
        EXPECT_EQ(security.MinimumLevel(restriction), minimum) << restriction;
    }
    EXPECT_EQ(messages.Take(), L"");
}

TEST_F(SecurityTest, WrongPasswordsAreAnsweredAndAskedForAgain) {
    ASSERT_TRUE(Connect());
    ASSERT_EQ(DocumentedMasterPasswords().size(), 2u);
    const std::wstring box = L"48|Vantor Security|The password you entered doesn't have privileges for this operation.";
    for (const std::wstring& master : DocumentedMasterPasswords()) {
        host.machine.boxes.clear();
        host.machine.pauses.clear();
        host.machine.typed = {L"", L"wrong", master, L"not asked for"};
        const CheckResult result =
            security.Check(restriction::kEnterDebugMode, {.allowed = true, .texts = {L"Why", L"Where"}});
        EXPECT_TRUE(result.isAllowed && result.enteredMasterPassword);
        EXPECT_EQ(host.machine.boxes, (std::vector{box, box}));
        EXPECT_EQ(host.machine.pauses, (std::vector<std::uint32_t>{300, 300}));
        EXPECT_EQ(host.machine.typed.size(), 1u);
    }
    host.machine.pauses.clear();
    host.machine.typed = {L"wrong"};
    EXPECT_FALSE(security.Check(restriction::kEnterDebugMode, {.allowed = true}).isAllowed);
    EXPECT_EQ(host.machine.pauses, (std::vector<std::uint32_t>{300, 300})) << "once more after the cancel";
    EXPECT_EQ(host.machine.asked, (std::vector<std::wstring>{L"Why/Where", L"Why/Where", L"/"}))
        << "one dialog a check";
    host.machine.pauses.clear();
    EXPECT_FALSE(security.Check(restriction::kEnterDebugMode, {.allowed = true}).isAllowed);
    EXPECT_TRUE(host.machine.pauses.empty()) << "cancelled at once";
    EXPECT_EQ(messages.Take(), L"");
}

TEST_F(SecurityTest, PasswordsAreAskedForWhereNeededAndAllowed) {
    ASSERT_TRUE(Connect());
    const auto check = [&](RestrictionID restriction, const wchar_t* password) {
        host.machine.typed = {password};
        const CheckResult result = security.Check(restriction, {.allowed = true});
        EXPECT_FALSE(result.enteredMasterPassword);
        return result.isAllowed;
    };
    EXPECT_FALSE(check(231, L"reset")) << "none is set";
    const std::wstring scrambled(Scramble(L"reset", product::kScramblerKey, host.codePage).View());
    Put(kAlarmResetDocument, L"<ManualAlarmResetPwd>" + scrambled + L"</ManualAlarmResetPwd>");
    EXPECT_TRUE(check(231, L"reset") && check(233, L"reset"));
    EXPECT_FALSE(check(231, L"Reset") || check(250, L"reset")) << "it opens the manual confirmations only";
    Put(kAccountsDocument, L"<L3>S-1-5-21-7</L3>");
    EXPECT_FALSE(security.Check(231, {}).isAllowed) << "a level 3 user is refused too";
    Put(kAlarmResetDocument, L"<Other></Other>");
    EXPECT_FALSE(check(231, L"reset"));
    host.machine.failing = "AskForPassword";
    EXPECT_TRUE(security.Check(301, {.allowed = true}).isAllowed);
    EXPECT_FALSE(security.Check(250, {}).isAllowed);
    EXPECT_EQ(messages.Take(), L"");
    EXPECT_FALSE(security.Check(250, {.allowed = true}).isAllowed);
    EXPECT_EQ(messages.Take(), L"4 -2147467259, it broke\n");
}

TEST_F(SecurityTest, AFailureInTheLevelLeavesTheLevelFoundSoFar) {
    ASSERT_TRUE(Connect());
    host.machine.isAdministrator = true;
    const std::pair<const char*, PrivilegeLevel> cases[] = {
        {"NewAccounts", 50},       // before anything is known
        {"ReadLookup", 53},        // no lists can be read, but the account can
        {"ConnectionString", 50},  // unknown is not Windows authentication
        {"IsCurrentUserAnAdministrator", 50}};
    for (const auto& [failing, level] : cases) {
        host.machine.failing = failing;
        EXPECT_EQ(security.UserLevel(), level) << failing;
        EXPECT_EQ(messages.Take(), L"4 -2147467259, it broke\n") << failing;
    }
}

// Each call on the database may be a trip over the network.
TEST_F(SecurityTest, ACheckReadsEachDocumentThatDecidesOnce) {
    const std::pair<RestrictionID, int> cases[] = {{308, 3}, {402, 3}, {398, 1}, {399, 2}};
    for (const wchar_t* login : {L"", L"jsmith"}) {
        host.machine.sqlUser = login;
        ASSERT_TRUE(Connect());
        Put(kSwitchDocument, L"<Enabled>1</Enabled>");
        Put(kAccountsDocument, L"<L2>S-1-5-21-7</L2><L2>jsmith</L2>");
        Put(kMinimumsDocument, L"<MinPrivLevel|rid=308>52</MinPrivLevel>");
        for (const auto& [restriction, reads] : cases) {
            host.machine.calls.clear();
            security.Check(restriction, {});
            EXPECT_EQ(std::count(host.machine.calls.begin(), host.machine.calls.end(), "ReadLookup"), reads)
                << restriction;
        }
    }
}

TEST(Levels, SufficiencyAndItsExceptions) {
    const std::tuple<PrivilegeLevel, RestrictionID, PrivilegeLevel, bool> cases[] = {
        {54, 301, 54, true}, {53, 301, 54, false}, {53, 398, 55, true},  {54, 398, 55, false},
        {55, 398, 55, true}, {55, 231, 33, false}, {50, 233, 33, false}, {33, 233, 33, true},
        {56, 231, 33, true}, {33, 301, 50, false}, {53, 301, 53, true}};
    for (const auto& [held, restriction, minimum, allowed] : cases) {
        EXPECT_EQ(IsSufficient(held, restriction, minimum), allowed) << held << " " << restriction;
    }
    std::vector<std::int32_t> valid;
    for (std::int32_t value = -1; value < 100; ++value) {
        if (IsValidLevel(value)) {
            valid.push_back(value);
        }
    }
    EXPECT_EQ(valid, (std::vector<std::int32_t>{33, 50, 51, 52, 54, 55, 56}));
}

TEST_F(SecurityTest, OtherLevelsHaveNoList) {
    SecuritySite site(host, messages);
    UserIdentity user(site);
    EXPECT_FALSE(site.ReportFailures([&] { AccountLists(site, user).Replace(level::k3Low, L"jsmith"); }));
    EXPECT_EQ(messages.Take(), L"4 Invalid privilege level [STR-0124]\n");
}

}  // namespace v5
