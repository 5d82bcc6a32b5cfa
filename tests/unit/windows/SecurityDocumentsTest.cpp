// The security documents as the system's own XML parser reads and writes them.
#include <windows.h>
// after windows.h, which it needs:
#include <objbase.h>

#include <gtest/gtest.h>

#include <tuple>

#include "base/Utf8.h"
#include "security/MsxmlDocument.h"
#include "security/Security.h"
#include "security/TextConversionFunctions.h"
#include "security/UtilityBase64Functions.h"
#include "unit/FakeSecurityHost.h"

namespace v5 {

namespace {

struct MsxmlHost : FakeSecurityHost {
    std::unique_ptr<XmlDocument> ParseXml(std::wstring_view text) override { return ParseWithMsxml(text); }
};

struct SecurityDocuments : testing::Test {
    MsxmlHost host;
    SecurityMessages messages;
    Security security{host, messages};

    SecurityDocuments() {
        CoInitialize(nullptr);
        security.Setup(kTestConnection, L"Test");
        host.machine.isAdministrator = true;
    }
    ~SecurityDocuments() override { CoUninitialize(); }

    std::wstring& Row(const DocumentFormat& format) { return host.machine.rows[std::wstring(format.key)]; }
    void Put(const DocumentFormat& format, std::wstring_view xml) { Row(format) = xml.empty() ? L"" : StoredForm(xml); }
    // The stored text, without the line breaks and tabs that the test machine's serialiser puts between elements.
    std::wstring Xml(const DocumentFormat& format) {
        std::wstring xml = FromUtf8(DecodeBase64(Row(format)));
        std::erase_if(xml, [](wchar_t c) { return c == L'\r' || c == L'\n' || c == L'\t'; });
        return xml;
    }
};

}  // namespace

TEST_F(SecurityDocuments, WhatChangesWrite) {
    host.machine.accountNames = {{L"S-1-5-21-9", L"PLANT\\A \"<&]> B"}, {L"S-1-1-0", L""}};
    const std::tuple<const DocumentFormat&, const wchar_t*, std::function<void()>, const wchar_t*, const wchar_t*>
        cases[] = {
            {kSwitchDocument, L"<a><!--keep--><x y='1'/><Enabled>True</Enabled></a>",
             [&] { security.SetEnabled(false); },
             L"<a><!--keep--><x y=\"1\"/><Enabled>0</Enabled>"
             L"<History action=\"Disabled\" tstamp=\"2014-03-05 14:07:09\" by=\"Operator7\"/></a>",
             nullptr},
            {kMinimumsDocument,
             L"<r><MinPrivLevel rid='7'> 51 </MinPrivLevel><MinPrivLevel rid='8'>52</MinPrivLevel></r>",
             [&] { security.SetMinimumLevel(7, 51); },
             L"<r><MinPrivLevel rid=\"7\">51</MinPrivLevel><MinPrivLevel rid=\"8\">52</MinPrivLevel></r>",
             L"STR-0139 SECURITY 1 RID 7: min privilege level changed from ' 51 ' to '51' by 'Operator7' \n"},
            {kAlarmResetDocument, L"<root><!--no password--></root>", [&] { security.SetAlarmResetPassword(L"9"); },
             L"<root><!--no password--><ManualAlarmResetPwd>9</ManualAlarmResetPwd>"
             L"<History tstamp=\"2014-03-05 14:07:09\" by=\"Operator7\"/></root>",
             nullptr},
            {kAccountsDocument, L"<root><!--keep--><x/><L1 name=\" Old \">S-1-5-7</L1><L1/><L2>two</L2></root>",
             [&] {
                 const AccountListTexts lists = {L" S-1-5-21-9 ,,o'neil & co]", L"two", L"S-1-1-0,s-1-1-0"};
                 security.SetAccountLists(lists, false);
             },
             L"<root><!--keep--><x/><L2>two</L2><L1 name=\"PLANT\\A &quot;&lt;&amp;]&gt; B\">S-1-5-21-9</L1>"
             L"<L1>o'neil &amp; co]</L1>"
             L"<History level=\"51\" tstamp=\"2014-03-05 14:07:09\" old=\"Old [S-1-5-7]\" "
             L"new=\"PLANT\\A &quot;&lt;&amp;]&gt; B [S-1-5-21-9],o'neil &amp; co]\" by=\"Operator7\"/>"
             L"<L3 name=\"\">S-1-1-0</L3><L3>s-1-1-0</L3>"
             L"<History level=\"55\" tstamp=\"2014-03-05 14:07:09\" old=\"\" new=\"[S-1-1-0],s-1-1-0\" "
             L"by=\"Operator7\"/></root>",
             L"STR-0128 SECURITY 1 Changed L1 SID list Operator7: original=\"Old [S-1-5-7]\" new=\"PLANT\\A \"<&]> B "
             L"[S-1-5-21-9],o'neil & co]\"\n"
             L"STR-0144 SECURITY 2 Account list for Vantor Level 1 was changed by 'Operator7'\n"
             L"STR-0128 SECURITY 1 Changed L3 SID list Operator7: original=\"\" new=\"[S-1-1-0],s-1-1-0\"\n"
             L"STR-0144 SECURITY 2 Account list for Vantor Level 3 was changed by 'Operator7'\n"}};
    for (const auto& [format, before, change, after, record] : cases) {
        host.machine.rows.clear();
        Put(format, before);
        change();
        EXPECT_EQ(Xml(format), after);
        EXPECT_TRUE(record == nullptr || host.machine.log == record) << testing::PrintToString(host.machine.log);
        host.machine.log.clear();
        if (&format != &kAlarmResetDocument) {  // the same again is a change of the password alone
            change();
            EXPECT_EQ(Xml(format) + host.machine.log, after);
        }
    }
    AccountListTexts lists;
    EXPECT_TRUE(security.GetAccountLists(lists));
    EXPECT_EQ(lists.level1 + L" / " + lists.level2 + L" / " + lists.level3,
              L"PLANT\\A \"<&]> B [S-1-5-21-9],o'neil & co] / two / [S-1-1-0],s-1-1-0");

    EXPECT_EQ(messages.Take(), L"");
}

TEST_F(SecurityDocuments, OnlyElementsUnderTheRootCount) {
    Put(kSwitchDocument, L"<r><x><Enabled>0</Enabled></x></r>");
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledByDefault);
    Put(kSwitchDocument, L"<r><Enabled>\r\n <!--no--> -1 </Enabled></r>");
    EXPECT_EQ(security.Status(), SecurityStatus::EnabledConfigured);
    Put(kAccountsDocument, L"<root><x><L3>S-1-5-21-7</L3></x><L2/></root>");
    EXPECT_EQ(security.UserLevel(), level::kOSAdmin);
    Put(kMinimumsDocument,
        L"<r><x><MinPrivLevel rid='7'>51</MinPrivLevel></x><MinPrivLevel rid='77'>52</MinPrivLevel></r>");
    EXPECT_EQ(security.MinimumLevel(7), level::k3Low);
    EXPECT_EQ(security.MinimumLevel(77), level::k2);
    EXPECT_EQ(messages.Take(), L"");
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
        L"<r><Enabled>0</Enabled>",
        L"\uFFFD",
        deep};
    for (const std::wstring& xml : hostile) {
        Put(kSwitchDocument, xml);
        Put(kAccountsDocument, xml);
        const auto rows = host.machine.rows;
        EXPECT_EQ(security.Status(), SecurityStatus::EnabledOther);
        EXPECT_EQ(security.UserLevel(), level::kOSAdmin);
        security.SetEnabled(true);
        EXPECT_EQ(messages.Take(),
                  L"4 Can't parse XML [STR-0100]\n4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0100]\n"
                  L"4 Can't parse XML [STR-0110]\n4 Can't parse XML [STR-0103]\n");
        EXPECT_EQ(host.machine.rows, rows) << "stored documents stay as they are";
        EXPECT_EQ(host.machine.log, L"");
    }
}

}  // namespace v5
