// The security rules over stored documents, with the system's own XML parser.
#include <windows.h>
// after windows.h, which it needs:
#include <objbase.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "ProductConstants.h"
#include "base/Utf8.h"
#include "security/MsxmlDocument.h"
#include "security/Scrambler.h"
#include "security/Security.h"
#include "security/UtilityBase64Functions.h"
#include "unit/FakeSecurityHost.h"

namespace v5 {

namespace {

using Messages = std::vector<SentMessage>;
using Log = std::vector<LoggedEvent>;

struct MsxmlHost : FakeSecurityHost {
    std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) override { return ParseWithMsxml(text); }
};

constexpr wchar_t kCategory[] = L"SECURITY";

struct SecurityDocuments : testing::Test {
    MsxmlHost host;
    SecurityMessages messages;
    Security security{host, messages};

    SecurityDocuments() {
        CoInitialize(nullptr);
        security.Setup({L"SITE1", L"EN", L"c", L"a", false}, L"Test");
    }
    ~SecurityDocuments() override { CoUninitialize(); }

    std::wstring& Row(const DocumentFormat& format) { return host.machine.rows[std::wstring(format.key)]; }
    void Put(const DocumentFormat& format, std::wstring_view xml) { Row(format) = EncodeBase64(ToUtf8(xml)); }
    // The stored text, without the line breaks and tabs that the test machine's serialiser puts between elements.
    std::wstring Xml(const DocumentFormat& format) {
        std::wstring xml = FromUtf8(DecodeBase64(Row(format)));
        std::erase_if(xml, [](wchar_t c) { return c == L'\r' || c == L'\n' || c == L'\t'; });
        return xml;
    }
    Log TakeLog() { return std::exchange(host.machine.log, {}); }
    CheckResult CheckWith(RestrictionID restriction, const std::wstring& password) {
        host.machine.typed = {password};
        return security.Check(restriction, {.allowed = true});
    }
};

}  // namespace

TEST_F(SecurityDocuments, SwitchingWritesHistoryAndAudit) {
    host.machine.isAdministrator = true;
    security.SetEnabled(true);
    const std::wstring enabled =
        L"<root><!--Created 2014-03-05 14:07:09--><Enabled>1</Enabled>"
        L"<History action=\"Enabled\" tstamp=\"2014-03-05 14:07:09\" by=\"Operator7\"/>";
    EXPECT_EQ(Xml(kSwitchDocument), enabled + L"</root>");
    EXPECT_EQ(TakeLog(), (Log{{L"Vantor security enabled by 'Operator7'", kCategory, 2, L"STR-0105"}}));
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledConfigured);

    host.now = {2014, 3, 6, 0, 0, 1};
    security.SetEnabled(true);
    EXPECT_EQ(Xml(kSwitchDocument), enabled + L"</root>") << "already enabled";
    EXPECT_TRUE(TakeLog().empty());
    security.SetEnabled(false);
    EXPECT_EQ(TakeLog(), (Log{{L"Vantor security disabled by 'Operator7'", kCategory, 2, L"STR-0105"}}));
    EXPECT_EQ(security.Status(), SecurityStatus::DisabledConfigured);
    security.SetEnabled(false);
    EXPECT_TRUE(TakeLog().empty());

    Put(kSwitchDocument, L"<a><!--keep--><x y='1'/><Enabled>False</Enabled></a>");
    security.SetEnabled(true);
    EXPECT_EQ(Xml(kSwitchDocument),
              L"<a><!--keep--><x y=\"1\"/><Enabled>1</Enabled>"
              L"<History action=\"Enabled\" tstamp=\"2014-03-06 00:00:01\" by=\"Operator7\"/></a>");
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityDocuments, StatusOfStoredTexts) {
    const Messages none, unparsable = {{4, L"Can't parse XML [STR-0100]"}};
    const struct {
        const wchar_t* xml;
        SecurityStatus status;
        const Messages& messages;
    } cases[] = {{L"<r><Enabled>True</Enabled></r>", SecurityStatus::EnabledConfigured, none},
                 {L"<r><Enabled> -1 </Enabled></r>", SecurityStatus::EnabledConfigured, none},
                 {L"<r><Enabled>false</Enabled></r>", SecurityStatus::DisabledConfigured, none},
                 {L"<r><Enabled>0</Enabled></r>", SecurityStatus::DisabledConfigured, none},
                 {L"<r><x><Enabled>0</Enabled></x></r>", SecurityStatus::EnabledByDefault, none},
                 {L"<r><Enabled>0</Enabled>", SecurityStatus::EnabledOther, unparsable}};
    for (const auto& c : cases) {
        Put(kSwitchDocument, c.xml);
        EXPECT_EQ(security.Status(), c.status) << c.xml;
        EXPECT_EQ(messages.Take(), c.messages) << c.xml;
    }
    Row(kSwitchDocument) = L"   ";
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledByDefault);
    Row(kSwitchDocument) = L"no Base64";
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther);
    EXPECT_EQ(messages.Take(), unparsable);
    Put(kSwitchDocument, L"<r><Enabled>perhaps</Enabled></r>");
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther);
    EXPECT_EQ(messages.Take(), (Messages{{4, L"13, Type mismatch"}}));
}

TEST_F(SecurityDocuments, LevelsFromTheAccountLists) {
    const struct {
        const wchar_t* lists;
        bool administrator;
        const wchar_t* sqlUser;
        PrivilegeLevel level;
    } cases[] = {{L"<L1>S-1-5-21-7</L1><L3>S-1-5-21-7</L3>", false, L"", 55},
                 {L"<L2>\r\n  s-1-5-21-7 </L2>", false, L"", 52},
                 {L"<L1/><L1> </L1><L1>S-1-9-99</L1><L1>S-1-5-32-545</L1>", false, L"", 51},
                 {L"<L1>S-1-5-21-7</L1>", true, L"", 53},
                 {L"<L2>S-1-5-21-7</L2>", true, L"", 53},
                 {L"<L3>S-1-5-32-545</L3>", true, L"", 55},
                 {L"<L3>S-1-5-21-77</L3><L3>Operator7</L3>", false, L"", 50},
                 {L"<x><L3>S-1-5-21-7</L3></x>", false, L"", 50},
                 {L"<L3>S-1-5-21-7</L3><L2>jSmith</L2>", true, L"JSMITH", 52},
                 {L"<L3>S-1-5-21-7</L3>", true, L"jsmith", 50}};
    for (const auto& c : cases) {
        host.machine.groups = {L"S-1-5-32-545"};
        host.machine.isAdministrator = c.administrator;
        host.machine.sqlUser = c.sqlUser;
        Put(kAccountsDocument, std::wstring(L"<root>") + c.lists + L"</root>");
        Security fresh(host, messages);  // the user's name is cached
        fresh.Setup(kTestConnection, L"Test");
        EXPECT_EQ(fresh.UserLevel(), c.level) << c.lists;
    }
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityDocuments, MinimumsStoredAndRejected) {
    Put(kSwitchDocument, L"<r><Enabled>1</Enabled></r>");
    const Messages none, invalid = {{4, L"Invalid value for RID 301 [STR-0131]"}};
    const struct {
        const wchar_t* text;
        PrivilegeLevel minimum;
        const Messages& messages;
    } cases[] = {{L"51", 51, none},    {L"\n 33 ", 33, none},   {L"5.2E1", 52, none}, {L"53", 54, invalid},
                 {L"57", 54, invalid}, {L"1e300", 54, invalid}, {L"fifty", 54, none}, {L"", 54, none}};
    for (int hundredths = 4900; hundredths < 5700; ++hundredths) {  // only a whole level is one
        const std::wstring text =
            std::to_wstring(hundredths / 100) + L"." + std::to_wstring(hundredths % 100 + 100).substr(1);
        Put(kMinimumsDocument, L"<root><MinPrivLevel rid=\"301\">" + text + L"</MinPrivLevel></root>");
        const bool isLevel = hundredths % 100 == 0 && IsValidLevel(hundredths / 100);
        EXPECT_EQ(security.MinimumLevel(301), isLevel ? hundredths / 100 : 54) << text;
        EXPECT_EQ(messages.Take(), isLevel ? none : invalid) << text;
    }
    for (const auto& c : cases) {
        Put(kMinimumsDocument, std::wstring(L"<root><MinPrivLevel rid=\"398\">50</MinPrivLevel><MinPrivLevel "
                                            L"rid=\"301\">") +
                                   c.text + L"</MinPrivLevel></root>");
        EXPECT_EQ(security.MinimumLevel(301), c.minimum) << c.text;
        EXPECT_EQ(messages.Take(), c.messages) << c.text;
        EXPECT_EQ(security.MinimumLevel(398), 55) << "a stored entry for a fixed restriction is ignored";
        EXPECT_EQ(security.MinimumLevel(302), 54);
    }
    EXPECT_EQ(security.MinimumLevel(399), 54);
    Put(kSwitchDocument, L"<r><Enabled>0</Enabled></r>");
    EXPECT_EQ(security.MinimumLevel(399), 50);
    EXPECT_EQ(security.MinimumLevel(301), 50);
    EXPECT_EQ(security.MinimumLevel(251), 54);
}

TEST_F(SecurityDocuments, AMinimumInOtherWordsIsAChange) {
    host.machine.isAdministrator = true;
    Put(kMinimumsDocument, L"<root><MinPrivLevel rid=\"7\"> 51 </MinPrivLevel></root>");
    EXPECT_TRUE(security.SetMinimumLevel(7, 51));
    EXPECT_EQ(Xml(kMinimumsDocument), L"<root><MinPrivLevel rid=\"7\">51</MinPrivLevel></root>");
    EXPECT_EQ(
        TakeLog(),
        (Log{{L"RID 7: min privilege level changed from ' 51 ' to '51' by 'Operator7' ", kCategory, 1, L"STR-0139"}}));
}

TEST_F(SecurityDocuments, ChangingAMinimum) {
    EXPECT_FALSE(security.SetMinimumLevel(301, 51)) << "level 50 may not";
    EXPECT_EQ(messages.Take(), (Messages{{4, L"Insufficient privileges to change password level [STR-0133]"}}));
    host.machine.isAdministrator = true;
    EXPECT_FALSE(security.SetMinimumLevel(301, 53));
    EXPECT_EQ(messages.Take(), (Messages{{4, L"Invalid value [STR-0136]"}}));
    EXPECT_TRUE(security.SetMinimumLevel(301, 51));
    EXPECT_EQ(Xml(kMinimumsDocument),
              L"<root> <!--Created  2014-03-05 14:07:09--><MinPrivLevel rid=\"301\">51</MinPrivLevel></root>");
    EXPECT_TRUE(security.SetMinimumLevel(301, 52));
    EXPECT_TRUE(security.SetMinimumLevel(-4, 33));
    EXPECT_EQ(
        TakeLog(),
        (Log{{L"RID 301: min privilege level changed from '' to '51' by 'Operator7' ", kCategory, 1, L"STR-0139"},
             {L"RID 301: min privilege level changed from '51' to '52' by 'Operator7' ", kCategory, 1, L"STR-0139"},
             {L"RID -4: min privilege level changed from '' to '33' by 'Operator7' ", kCategory, 1, L"STR-0139"}}));
    const std::wstring before = Row(kMinimumsDocument);
    EXPECT_TRUE(security.SetMinimumLevel(301, 52));
    EXPECT_EQ(Row(kMinimumsDocument), before);
    EXPECT_TRUE(TakeLog().empty());
    Put(kSwitchDocument, L"<r><Enabled>0</Enabled></r>");
    EXPECT_FALSE(security.SetMinimumLevel(301, 54));
    EXPECT_FALSE(security.SetAccountLists({}, false));
    EXPECT_EQ(messages.Take(), (Messages{{4, L"Security features are not enabled [STR-0135]"},
                                         {4, L"Security features are not enabled [STR-0158]"}}));
}

TEST_F(SecurityDocuments, ReplacingTheAccountLists) {
    host.machine.isAdministrator = true;
    host.machine.accountNames = {{L"S-1-5-21-9", L"PLANT\\A \"<&]> B"}, {L"S-1-1-0", L""}};
    Put(kAccountsDocument, L"<root><!--keep--><x/><L1 name=\" Old \">S-1-5-7</L1><L1/><L2>two</L2></root>");
    ASSERT_TRUE(security.SetAccountLists({L" S-1-5-21-9 ,,o'neil & co]", L"two", L"S-1-1-0,s-1-1-0"}, false));
    EXPECT_EQ(Xml(kAccountsDocument),
              L"<root><!--keep--><x/><L2>two</L2><L1 name=\"PLANT\\A &quot;&lt;&amp;]&gt; B\">S-1-5-21-9</L1>"
              L"<L1>o'neil &amp; co]</L1>"
              L"<History level=\"51\" tstamp=\"2014-03-05 14:07:09\" old=\"Old [S-1-5-7]\" "
              L"new=\"PLANT\\A &quot;&lt;&amp;]&gt; B [S-1-5-21-9],o'neil &amp; co]\" by=\"Operator7\"/>"
              L"<L3 name=\"\">S-1-1-0</L3><L3>s-1-1-0</L3>"
              L"<History level=\"55\" tstamp=\"2014-03-05 14:07:09\" old=\"\" new=\"[S-1-1-0],s-1-1-0\" "
              L"by=\"Operator7\"/></root>");
    AccountListTexts lists;
    EXPECT_TRUE(security.GetAccountLists(lists));
    EXPECT_EQ(lists.level1, L"PLANT\\A \"<&]> B [S-1-5-21-9],o'neil & co]");
    EXPECT_EQ(lists.level2, L"two");
    EXPECT_EQ(lists.level3, L"[S-1-1-0],s-1-1-0");
    EXPECT_EQ(
        TakeLog(),
        (Log{{L"Changed L1 SID list Operator7: original=\"Old [S-1-5-7]\" new=\"PLANT\\A \"<&]> B "
              L"[S-1-5-21-9],o'neil & co]\"",
              kCategory, 1, L"STR-0128"},
             {L"Account list for Vantor Level 1 was changed by 'Operator7'", kCategory, 2, L"STR-0144"},
             {L"Changed L3 SID list Operator7: original=\"\" new=\"[S-1-1-0],s-1-1-0\"", kCategory, 1, L"STR-0128"},
             {L"Account list for Vantor Level 3 was changed by 'Operator7'", kCategory, 2, L"STR-0144"}}));

    Row(kAccountsDocument).clear();
    host.machine.sqlUser = L"Operator7";
    Put(kAccountsDocument, L"<root><L3>operator7</L3></root>");
    ASSERT_TRUE(security.SetAccountLists({L"S-1-5-21-9", L"", L"operator7"}, false));
    EXPECT_NE(Xml(kAccountsDocument).find(L"<L1>S-1-5-21-9</L1>"), std::wstring::npos)
        << "no account names under SQL authentication";
    EXPECT_TRUE(messages.Take().empty());
}

TEST_F(SecurityDocuments, TheFirstAccountListsStartANewDocument) {
    host.machine.isAdministrator = true;
    ASSERT_TRUE(security.SetAccountLists({L"", L"anna", L""}, false));
    EXPECT_EQ(Xml(kAccountsDocument),
              L"<root> <!--Created 2014-03-05 14:07:09--> <L2>anna</L2><History level=\"52\" "
              L"tstamp=\"2014-03-05 14:07:09\" old=\"\" new=\"anna\" by=\"Operator7\"/></root>");
}

TEST_F(SecurityDocuments, TheAlarmResetPasswordOpensTheManualConfirmationsOnly) {
    const std::wstring scrambled(Scramble(L"reset", product::kScramblerKey, host.codePage).View());
    host.machine.isAdministrator = true;
    EXPECT_FALSE(CheckWith(231, L"reset").isAllowed) << "none is set";
    ASSERT_TRUE(security.SetAlarmResetPassword(scrambled));
    EXPECT_EQ(Xml(kAlarmResetDocument),
              L"<root> <!--Created  2014-03-05 14:07:09--><ManualAlarmResetPwd>" + scrambled +
                  L"</ManualAlarmResetPwd><History tstamp=\"2014-03-05 14:07:09\" by=\"Operator7\"/></root>");
    EXPECT_EQ(TakeLog(), (Log{{L"Manual alarm reset password changed by 'Operator7'", kCategory, 2, L"STR-0117"}}));
    const struct {
        RestrictionID restriction;
        const wchar_t* password;
        bool allowed;
    } cases[] = {{231, L"reset", true}, {233, L"reset", true}, {231, L"Reset", false}, {250, L"reset", false}};
    for (const auto& c : cases) {
        const CheckResult result = CheckWith(c.restriction, c.password);
        EXPECT_EQ(result.isAllowed, c.allowed) << c.restriction << c.password;
        EXPECT_FALSE(result.enteredMasterPassword);
    }
    Put(kAlarmResetDocument, L"<root><!--no password--></root>");
    EXPECT_FALSE(CheckWith(231, L"reset").isAllowed);
    ASSERT_TRUE(security.SetAlarmResetPassword(scrambled)) << "the missing element is made";
    EXPECT_TRUE(CheckWith(231, L"reset").isAllowed);

    host.machine.isAdministrator = false;
    Put(kAccountsDocument, L"<root><L2>S-1-5-21-7</L2></root>");
    EXPECT_FALSE(security.SetAlarmResetPassword(L"1"));
    EXPECT_EQ(messages.Take(),
              (Messages{{12292, L"Insufficient privileges to change 'manual alarm reset password' [STR-015]"}}));
    Put(kAccountsDocument, L"<root><L3>S-1-5-21-7</L3></root>");
    EXPECT_FALSE(security.Check(231, {}).isAllowed) << "a level 3 user is refused too";
}

TEST_F(SecurityDocuments, OneReadOfEachDocumentACheck) {
    Put(kSwitchDocument, L"<r><Enabled>1</Enabled></r>");
    Put(kAccountsDocument, L"<root><L2>S-1-5-21-7</L2></root>");
    for (const wchar_t* minimum : {L"52", L"54"}) {
        Put(kMinimumsDocument, L"<root><MinPrivLevel rid=\"301\">" + std::wstring(minimum) + L"</MinPrivLevel></root>");
        host.machine.calls.clear();
        EXPECT_EQ(security.Check(301, {}).isAllowed, minimum == std::wstring(L"52"))
            << "nothing is kept between checks";
        EXPECT_EQ(std::count(host.machine.calls.begin(), host.machine.calls.end(), "ReadLookup"), 3);
    }
}

TEST_F(SecurityDocuments, HostileTextIsAnUnparsableDocument) {
    std::wstring deep;
    for (int i = 0; i < 100000; ++i) {
        deep += L"<a>";
    }
    const std::wstring hostile[] = {
        L"<!DOCTYPE r SYSTEM \"http://127.0.0.1:9/x.dtd\"><r/>",
        L"<?xml version=\"1.0\"?><!DOCTYPE r [<!ENTITY a \"x\"><!ENTITY b \"&a;&a;\">]><r>&b;</r>",
        L"<r>&undefined;</r>",
        L"<r/><r/>",
        L"\uFFFD",
        deep};
    host.machine.isAdministrator = true;
    AccountListTexts lists;
    for (const std::wstring& xml : hostile) {
        for (const DocumentFormat* format :
             {&kSwitchDocument, &kAccountsDocument, &kAlarmResetDocument, &kMinimumsDocument}) {
            Put(*format, xml);
        }
        const auto rows = host.machine.rows;
        EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther);
        EXPECT_EQ(security.UserLevel(), 53);
        EXPECT_TRUE(security.GetAccountLists(lists));
        EXPECT_FALSE(CheckWith(231, L"..garbage..").isAllowed);
        EXPECT_EQ(messages.Take(), (Messages{{4, L"Can't parse XML [STR-0100]"},
                                             {4, L"Can't parse XML [STR-0110]"},
                                             {4, L"Can't parse XML [STR-0119]"},
                                             {4, L"Can't parse XML [STR-0110]"},
                                             {4, L"Can't parse XML [STR-0113]"}}));
        EXPECT_EQ(security.MinimumLevel(301), 54);
        EXPECT_EQ(messages.Take().back(), (SentMessage{4, L"Can't parse XML [STR-0130]"}));
        security.SetEnabled(true);
        EXPECT_EQ(messages.Take().back(), (SentMessage{4, L"Can't parse XML [STR-0103]"}));
        EXPECT_FALSE(security.SetMinimumLevel(301, 51));
        EXPECT_EQ(messages.Take().back(), (SentMessage{4, L"Can't parse XML [STR-0137]"}));
        EXPECT_FALSE(security.SetAlarmResetPassword(L"1"));
        EXPECT_EQ(messages.Take().back(), (SentMessage{4, L"Can't parse XML [STR-0116]"}));
        EXPECT_FALSE(security.SetAccountLists({L"a", L"b", L"c"}, false));
        EXPECT_EQ(messages.Take().back(), (SentMessage{4, L"Can't parse XML [STR-0126]"}));
        EXPECT_EQ(host.machine.rows, rows) << "stored documents stay as they are";
        EXPECT_TRUE(TakeLog().empty());
    }
}

TEST_F(SecurityDocuments, AFailedChangeLeavesTheDocumentAsItWas) {
    host.machine.isAdministrator = true;
    Put(kMinimumsDocument, L"<root/>");
    static const AccountListTexts lists{L"", L"anna", L"otto"};
    const struct {
        const char* change;
        bool (*run)(Security&);
        const wchar_t* saveProblem;
        const wchar_t* auditProblem;
    } changes[] = {{"switch", [](Security& s) { return s.SetEnabled(true), false; }, L"Can't save XML [STR-0104]",
                    L"Can't write audit record [STR-0105]"},
                   {"minimum", [](Security& s) { return s.SetMinimumLevel(301, 51); }, L"Can't save XML [STR-0138]",
                    L"Can't write audit record [STR-0139]"},
                   {"password", [](Security& s) { return s.SetAlarmResetPassword(L"123"); },
                    L"Can't save XML [STR-0143]", L"Can't write audit record [STR-0117]"},
                   {"lists", [](Security& s) { return s.SetAccountLists(lists, false); }, L"Can't save XML [STR-0127]",
                    L"Can't write audit record [STR-0128]"}};
    for (const auto& c : changes) {
        for (const auto& [failing, problem] :
             {std::pair{"WriteLookup", c.saveProblem}, {"WriteEvent", c.auditProblem}}) {
            host.machine.rows.emplace(kAccountsDocument.key, L"");  // rows that reading makes
            const auto rows = host.machine.rows;
            host.machine.failing = failing;
            EXPECT_FALSE(c.run(security)) << c.change;
            EXPECT_EQ(messages.Take(), (Messages{{4, problem}})) << c.change;
            for (const auto& [key, value] : host.machine.rows) {
                EXPECT_EQ(value, rows.contains(key) ? rows.at(key) : L"") << c.change;
            }
        }
    }
    host.machine.failing.clear();
    const auto rows = host.machine.rows;
    for (const wchar_t* bad : {L"bo\x1b", L"bo\xFFFE", L"bo\xD800", L"b\ro"}) {
        EXPECT_FALSE(security.SetAlarmResetPassword(bad));
        EXPECT_FALSE(security.SetAccountLists({bad, L"", L""}, false));
        EXPECT_FALSE(security.SetAccountLists({L"anna", L"", bad}, false));
        EXPECT_EQ(messages.Take(),
                  (Messages{{4, changes[2].saveProblem}, {4, changes[3].saveProblem}, {4, changes[3].saveProblem}}));
        host.machine.windowsUser = bad;
        for (const auto& c : {changes[0], changes[2], changes[3]}) {  // whose documents name the user
            Security other(host, messages);
            other.Setup(kTestConnection, L"Test");
            EXPECT_FALSE(c.run(other));
            EXPECT_EQ(messages.Take(), (Messages{{4, c.saveProblem}})) << c.change;
        }
    }
    EXPECT_EQ(host.machine.rows, rows);
    EXPECT_TRUE(TakeLog().empty());
}

}  // namespace v5
