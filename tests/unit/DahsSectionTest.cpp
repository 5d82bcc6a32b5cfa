#include "config/SiteFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakeSiteHost.h"

namespace v5 {

namespace {

using Problems = std::vector<std::wstring>;

constexpr char kConnectionKeys[] =
    "SQLAlarms=alarms\nSQLConfig=config\nSQLData=Server=s;Database=Vantor5Data\nSQLDataShortTerm=short\n"
    "SQLRealtime=realtime\n";

struct Result {
    DahsEntryList entries;
    Problems problems;
};

Result ReadFile(const std::string& text, BlankConnections option = BlankConnections::IgnoreEntry) {
    const IniFile file(FakeSiteHost::Decoded(text), SiteSections());
    Result result;
    ReadDahsEntries(file, L"F", option, result.entries, result.problems);
    return result;
}

// Reads section Dahs3, sound but for `lines`, whose keys come first and so override the sound ones.
Result ReadSection(const std::string& lines) {
    return ReadFile("[Dahs3]\n" + lines + "\nSiteID=AB\nDahsComputerName=das1\nVantorDir=D:\\V\nBackupDir=D:\\B\n" +
                    kConnectionKeys);
}

DahsEntry ReadEntry(const std::string& lines) {
    const Result result = ReadSection(lines);
    return result.entries.Count() == 1 ? *result.entries.At(0) : DahsEntry();
}

}  // namespace

TEST(DahsSection, DefaultsOfASoundSection) {
    const Result result = ReadSection("");
    ASSERT_EQ(result.entries.Count(), 1);
    EXPECT_EQ(result.problems, Problems());
    const DahsEntry& entry = *result.entries.At(0);
    EXPECT_EQ(entry.dahsID, 3);
    EXPECT_TRUE(entry.hdrEnabled && entry.extraTraceMsgsEnabled && entry.logFlushEnabled);
    EXPECT_EQ(entry.autoOutput, AutoOutput::Unknown);
    EXPECT_TRUE(entry.AutoOutputEnabled());
    EXPECT_EQ(entry.autoOutputTimeout, 60);
    EXPECT_EQ(entry.role, RedundantDasRole::Standalone);
    EXPECT_FALSE(entry.syncStagingEnabled || entry.syncCompareEnabled || entry.syncMergeEnabled);
    EXPECT_EQ(entry.logsDir, L"D:\\V\\Logs");
    EXPECT_EQ(entry.primaryBackupDir, L"D:\\B");
}

// Each faulty line, whether the entry survives it, and the messages in their order.
TEST(DahsSection, Messages) {
    struct Case {
        std::string lines;
        bool usable;
        Problems problems;
    };
    const std::wstring unusable = L"STR-031: DAHS3 in 'F' cannot be used because one or more entries are invalid";
    const std::wstring blank =
        L"STR-0174: DAHS3 in 'F' cannot be used because one or more connection strings are blank";
    const std::wstring badOutput = L"STR-0172: 'F', DAHS 3: 'AutoOutputEnabled' entry is not valid. Will assume 'YES'.";
    const std::wstring badTimeout = L"STR-0173: 'F', DAHS 3: 'AutoOutputEnabled' timeout is not valid. Will use 60.";
    const auto missing = [](const std::wstring& tag, const std::wstring& key) {
        return tag + L": 'F', DAHS 3: missing or invalid value for '" + key + L"'";
    };
    const Case cases[] = {
        {"SiteID=123", false, {missing(L"STR-084", L"SiteID") + L"; may not be a number", unusable}},
        {"SiteID=1D2", false, {missing(L"STR-084", L"SiteID") + L"; may not be a number", unusable}},
        {"SiteID=", false, {}},
        {"SiteID=\" \"", false, {}},
        {"DahsComputerName=", false, {missing(L"STR-091", L"DahsComputerName") + L"; may not be blank", unusable}},
        {"DahsComputerName=ABCDEFGHIJKLMNO", true, {}},
        {"DahsComputerName=ABCDEFGHIJKLMNOP",
         true,
         {L"STR-0189: 'F', DAHS 3: Computer name 'ABCDEFGHIJKLMNOP' exceeds the max length of a NetBIOS name (15 "
          L"chars); this may be correct but is unusual"}},
        {"DahsComputerName=A\x96\x97",
         true,
         {L"STR-161: 'F', DAHS 3: 'DahsComputerName' contains an em dash. This may be incorrect, and a hyphen may be "
          L"correct.",
          L"STR-162: 'F', DAHS 3: 'DahsComputerName' contains an en dash. This may be incorrect, and a hyphen may be "
          L"correct."}},
        {"VantorDir=", false, {missing(L"STR-085", L"VantorDir"), missing(L"STR-142", L"LogsDir"), unusable}},
        {"VantorDir=\nLogsDir=L", false, {missing(L"STR-085", L"VantorDir"), unusable}},
        {"AutoOutputEnabled=maybe", true, {badOutput}},
        {"AutoOutputEnabled=yes ,30", true, {badOutput}},
        {"AutoOutputEnabled=YES,abc", true, {badTimeout}},
        {"AutoOutputEnabled=YES,", true, {badTimeout}},
        {"AutoOutputEnabled=x,y", true, {badOutput, badTimeout}},
        {"RedundantDasRole=1",
         true,
         {L"STR-0179: 'F', DAHS 3: 'RedundantDasRole' entry is not valid. Will assume 'STANDALONE'."}},
        {"RedundantDasRole=Primary\nAutoOutputEnabled=Auto-Secondary",
         true,
         {L"STR-0180: 'F', DAHS 3: 'RedundantDasRole=PRIMARY is inconsistent with AutoOutputEnabled=AUTOSECONDARY. "
          L"Will assume 'STANDALONE'."}},
        {"RedundantDasRole=Secondary\nAutoOutputEnabled=AUTO_PRIMARY",
         true,
         {L"STR-0181: 'F', DAHS 3: 'RedundantDasRole=SECONDARY is inconsistent with AutoOutputEnabled=AUTOPRIMARY. "
          L"Will assume 'STANDALONE'."}},
        {"SQLAlarms=\nSQLConfig=\nSQLData=\nSQLDataShortTerm=\nSQLRealtime=",
         false,
         {missing(L"STR-086", L"SQLAlarms"), missing(L"STR-087", L"SQLConfig"), missing(L"STR-088", L"SQLData"),
          missing(L"STR-0160", L"SQLDataShortTerm"), missing(L"STR-089", L"SQLRealtime"), blank}},
        {"SQLRealtime=\nSiteID=7",
         false,
         {missing(L"STR-084", L"SiteID") + L"; may not be a number", missing(L"STR-089", L"SQLRealtime"), blank}},
        {"BackupDir=", true, {missing(L"STR-024", L"BackupDir")}}};
    for (const Case& c : cases) {
        const Result result = ReadSection(c.lines);
        EXPECT_EQ(result.entries.Count(), c.usable ? 1 : 0) << c.lines;
        EXPECT_EQ(result.problems, c.problems) << c.lines;
    }
}

TEST(DahsSection, BlankConnectionStringsMayBeAllowed) {
    const std::string faults = "[Dahs1]\nSiteID=AB\nDahsComputerName=c\nVantorDir=D:\\V\nBackupDir=b\n";
    const Result kept = ReadFile(faults, BlankConnections::AllowEntry);
    ASSERT_EQ(kept.entries.Count(), 1);
    EXPECT_EQ(kept.problems.size(), 5u);
    EXPECT_EQ(kept.entries.At(0)->connectionStrings[ConnectionForm::DotNet][Database::Alarms], L"");
    const Result dropped = ReadFile(faults + "[Dahs2]\nSiteID=9\n", BlankConnections::AllowEntry);
    EXPECT_EQ(dropped.entries.Count(), 1);
    EXPECT_EQ(dropped.problems.back(), L"STR-031: DAHS2 in 'F' cannot be used because one or more entries are invalid");
}

TEST(DahsSection, AutoOutput) {
    struct Case {
        const char* value;
        AutoOutput setting;
        std::int32_t timeout;
    };
    for (const Case& c : {Case{"1", AutoOutput::Enabled, 60}, Case{"0", AutoOutput::Disabled, 60},
                          Case{"1,30", AutoOutput::Enabled, 60}, Case{"(0)", AutoOutput::Disabled, 60},
                          Case{"true", AutoOutput::Enabled, 60}, Case{"Fasle,5", AutoOutput::Disabled, 5},
                          Case{"auto_secondary,30", AutoOutput::AutoSecondaryDas, 30},
                          Case{"Auto-Primary, 2.5 ,x", AutoOutput::AutoPrimaryDas, 2},
                          Case{"-auto_dahs-ID,3.5", AutoOutput::AutoDahsId, 4},
                          Case{"AutoDasID,&H10", AutoOutput::AutoDahsId, 16}, Case{"yes,-5", AutoOutput::Enabled, 0},
                          Case{"no,3000000000", AutoOutput::Disabled, 0}, Case{"maybe,9", AutoOutput::Unknown, 9}}) {
        const DahsEntry entry = ReadEntry(std::string("AutoOutputEnabled=") + c.value);
        EXPECT_EQ(entry.autoOutput, c.setting) << c.value;
        EXPECT_EQ(entry.autoOutputTimeout, c.timeout) << c.value;
        EXPECT_EQ(entry.AutoOutputEnabled(), c.setting != AutoOutput::Disabled) << c.value;
    }
}

TEST(DahsSection, Switches) {
    for (const char* value : {"fasle", "No", "FALSE", "0", "&H0", "(0.0)"}) {
        EXPECT_FALSE(ReadEntry(std::string("HDR=") + value).hdrEnabled) << value;
    }
    for (const char* value : {"off", "yes", "-1", "0.1", "1e999"}) {
        EXPECT_TRUE(ReadEntry(std::string("HDR=") + value).hdrEnabled) << value;
    }
    for (const char* value : {"true", "YES", "2"}) {
        EXPECT_TRUE(ReadEntry(std::string("RedundantDASSyncMergeEnabled=") + value).syncMergeEnabled) << value;
    }
    for (const char* value : {"on", "0", "no"}) {
        EXPECT_FALSE(ReadEntry(std::string("RedundantDasSyncStagingEnabled=") + value).syncStagingEnabled) << value;
    }
}

TEST(DahsSection, Texts) {
    const DahsEntry entry = ReadEntry(
        "SiteID=\x22 abc \x22\nLanguageID= en \nDahsDescription={Optional dahs "
        "description}\nReportsURL=http://x/y?a=b\n"
        "VantorDir=D:\\V\\\nRedundantDasRole=sec-ond_ary\nDRCurrentHealthTimeouts= 1, 2 ; 3 4\n"
        "TraceEnabled=no\nLogFlushEnabled=0\nRedundantDasSyncCompareEnabled=1");
    EXPECT_EQ(entry.siteID, L"ABC");
    EXPECT_EQ(entry.languageId, L"en");
    EXPECT_EQ(entry.description, L"");
    EXPECT_EQ(entry.reportsUrl, L"http://x/y?a=b");
    EXPECT_EQ(entry.logsDir, L"D:\\V\\\\Logs");  // the folder is taken as it stands
    EXPECT_EQ(entry.role, RedundantDasRole::Secondary);
    EXPECT_EQ(entry.drCurrentHealthTimeouts, L"1,2;34");
    EXPECT_FALSE(entry.extraTraceMsgsEnabled || entry.logFlushEnabled);
    EXPECT_TRUE(entry.syncCompareEnabled);
}

TEST(DahsSection, ConnectionStrings) {
    const auto at = [](const DahsEntry& entry, ConnectionForm form, Database database) {
        return entry.connectionStrings[form][database];
    };
    const DahsEntry derived = ReadEntry(
        "SQLData=PROVIDER=p;Server=s;Database=Vantor5Data;Pwd=xProviderY;datatypecompatibility=80\n"
        "SQLConfigNoninteractive=Provider=q;c\nSQLAlarms.NET=own");
    EXPECT_EQ(at(derived, ConnectionForm::DotNet, Database::Data), L"Server=s;Database=Vantor5Data;Pwd=xProviderY;");
    EXPECT_EQ(at(derived, ConnectionForm::OleDb, Database::Ostra),
              L"PROVIDER=p;Server=s;Database=Vantor5Ostra;Pwd=xProviderY;datatypecompatibility=80");
    EXPECT_EQ(at(derived, ConnectionForm::DotNet, Database::Ostra), L"Server=s;Database=Vantor5Ostra;Pwd=xProviderY;");
    EXPECT_EQ(at(derived, ConnectionForm::OleDbNoninteractive, Database::Alarms), L"alarms");
    EXPECT_EQ(at(derived, ConnectionForm::DotNetNoninteractive, Database::Config), L"c");
    EXPECT_EQ(at(derived, ConnectionForm::DotNet, Database::Config), L"config");
    EXPECT_EQ(at(derived, ConnectionForm::DotNet, Database::Alarms), L"own");
    EXPECT_EQ(at(derived, ConnectionForm::DotNetNoninteractive, Database::Alarms), L"alarms");

    const DahsEntry inside = ReadEntry("SQLData=Server=s;Pwd=aProvider1;Database=VANTOR5DATA");
    EXPECT_EQ(at(inside, ConnectionForm::DotNet, Database::Data), L"Server=s;Pwd=aDatabase=VANTOR5DATA");
    EXPECT_EQ(at(inside, ConnectionForm::OleDb, Database::Ostra), L"Server=s;Pwd=aProvider1;Database=VANTOR5DATA");
    EXPECT_EQ(at(ReadEntry("SQLData=a;provider"), ConnectionForm::DotNet, Database::Data), L"a;");

    // Every key reaches the string of its own name.
    std::string lines;
    std::vector<std::string> names;
    for (const char* form : {"", "Noninteractive", ".NET", "Noninteractive.NET"}) {
        for (const char* database : {"Alarms", "Config", "Data", "DataShortTerm", "Realtime", "Ostra"}) {
            names.push_back(std::string("SQL") + database + form);
            lines += names.back() + "=<" + names.back() + ">\n";
        }
    }
    const DahsEntry full = ReadEntry(lines);
    for (size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(
            full.connectionStrings[static_cast<ConnectionForm>(i / kDatabaseCount)][kDatabases[i % kDatabaseCount]],
            L"<" + std::wstring(names[i].begin(), names[i].end()) + L">");
    }
}

TEST(DahsSection, AffinityMasks) {
    const Result result = ReadFile(std::string("[AffinityMasks]\nIOS=0x0F\nDR= &h3 \nDM=0XF\nRG=0xFFFFFFFF\nDBE=12\n"
                                               "[Dahs1]\nSiteID=A\nDahsComputerName=c\nVantorDir=v\nBackupDir=b\n") +
                                   kConnectionKeys);
    ASSERT_EQ(result.entries.Count(), 1);
    const auto& masks = result.entries.At(0)->affinityMasks;
    EXPECT_EQ(masks[AppCategory::Ios], 15);
    EXPECT_EQ(masks[AppCategory::Dr], 3);
    EXPECT_EQ(masks[AppCategory::Dm], 0);
    EXPECT_EQ(masks[AppCategory::Rg], -1);
    EXPECT_EQ(masks[AppCategory::Dbe], 12);
    EXPECT_EQ(masks[AppCategory::NotApplicable], 0);
}

TEST(DahsSection, SectionsFrom1To99AreReadInOrder) {
    std::string text;
    for (const char* number : {"100", "99", "7", "0", "2", "01"}) {
        text += std::string("[Dahs") + number + "]\nSiteID=S" + number +
                "\nDahsComputerName=c\nVantorDir=v\nBackupDir=b\n" + kConnectionKeys;
    }
    const Result result = ReadFile(text);
    ASSERT_EQ(result.entries.Count(), 3);
    EXPECT_EQ(result.entries.At(0)->dahsID, 2);
    EXPECT_EQ(result.entries.At(1)->dahsID, 7);
    EXPECT_EQ(result.entries.At(2)->dahsID, 99);
    EXPECT_EQ(result.entries.Find(7), result.entries.At(1));
    EXPECT_EQ(result.entries.Find(1), nullptr);
    EXPECT_EQ(result.entries.At(3), nullptr);
    EXPECT_EQ(result.entries.At(-1), nullptr);
}

}  // namespace v5
