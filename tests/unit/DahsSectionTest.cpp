#include "config/SiteFile.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "FakeSiteHost.h"

namespace v5 {

namespace {

using Problems = std::vector<std::wstring>;

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

DahsEntry ReadEntry(const std::string& lines) {
    const Result result = ReadFile(Section(3, lines));
    return result.entries.Count() == 1 ? *result.entries.At(0) : DahsEntry();
}

}  // namespace

// Each faulty line, whether the entry survives it, and the messages in their order.
TEST(DahsSection, Messages) {
    const std::wstring unusable = L"STR-031: DAHS3 in 'F' cannot be used because one or more entries are invalid\n";
    const std::wstring blank =
        L"STR-0174: DAHS3 in 'F' cannot be used because one or more connection strings are blank\n";
    const std::wstring badOutput =
        L"STR-0172: 'F', DAHS 3: 'AutoOutputEnabled' entry is not valid. Will assume 'YES'.\n";
    const std::wstring badTimeout = L"STR-0173: 'F', DAHS 3: 'AutoOutputEnabled' timeout is not valid. Will use 60.\n";
    const auto missing = [](const wchar_t* tag, const wchar_t* key, const wchar_t* more = L"") {
        return std::wstring(tag) + L": 'F', DAHS 3: missing or invalid value for '" + key + L"'" + more + L"\n";
    };
    const std::wstring badSite = missing(L"STR-084", L"SiteID", L"; may not be a number");
    const std::pair<std::string, std::wstring> cases[] = {
        {"", L""},
        {"SiteID=123", badSite + unusable},
        {"SiteID=1D2", badSite + unusable},
        {"DahsComputerName=", missing(L"STR-091", L"DahsComputerName", L"; may not be blank") + unusable},
        {"DahsComputerName=ABCDEFGHIJKLMNO", L""},
        {"DahsComputerName=ABCDEFGHIJKLMNOP",
         L"STR-0189: 'F', DAHS 3: Computer name 'ABCDEFGHIJKLMNOP' exceeds the max length of a NetBIOS name (15 "
         L"chars); this may be correct but is unusual\n"},
        {"DahsComputerName=A\x96\x97",
         L"STR-161: 'F', DAHS 3: 'DahsComputerName' contains an em dash. This may be incorrect, and a hyphen may be "
         L"correct.\nSTR-162: 'F', DAHS 3: 'DahsComputerName' contains an en dash. This may be incorrect, and a "
         L"hyphen may be correct.\n"},
        {"VantorDir=", missing(L"STR-085", L"VantorDir") + missing(L"STR-142", L"LogsDir") + unusable},
        {"VantorDir=\nLogsDir=L", missing(L"STR-085", L"VantorDir") + unusable},
        {"AutoOutputEnabled=maybe", badOutput},
        {"AutoOutputEnabled=yes ,30", badOutput},
        {"AutoOutputEnabled=YES,abc", badTimeout},
        {"AutoOutputEnabled=YES,", badTimeout},
        {"AutoOutputEnabled=x,y", badOutput + badTimeout},
        {"RedundantDasRole=Stand-Alone", L""},
        {"RedundantDasRole=1",
         L"STR-0179: 'F', DAHS 3: 'RedundantDasRole' entry is not valid. Will assume 'STANDALONE'.\n"},
        {"RedundantDasRole=Primary\nAutoOutputEnabled=Auto-Secondary",
         L"STR-0180: 'F', DAHS 3: 'RedundantDasRole=PRIMARY is inconsistent with AutoOutputEnabled=AUTOSECONDARY. "
         L"Will assume 'STANDALONE'.\n"},
        {"RedundantDasRole=Secondary\nAutoOutputEnabled=AUTO_PRIMARY",
         L"STR-0181: 'F', DAHS 3: 'RedundantDasRole=SECONDARY is inconsistent with AutoOutputEnabled=AUTOPRIMARY. "
         L"Will assume 'STANDALONE'.\n"},
        {"SQLAlarms=\nSQLConfig=\nSQLData=\nSQLDataShortTerm=\nSQLRealtime=",
         missing(L"STR-086", L"SQLAlarms") + missing(L"STR-087", L"SQLConfig") + missing(L"STR-088", L"SQLData") +
             missing(L"STR-0160", L"SQLDataShortTerm") + missing(L"STR-089", L"SQLRealtime") + blank},
        {"SQLRealtime=\nSiteID=7", badSite + missing(L"STR-089", L"SQLRealtime") + blank},
        {"BackupDir=", missing(L"STR-024", L"BackupDir")}};
    for (const auto& [lines, says] : cases) {
        const Result result = ReadFile(Section(3, lines));
        EXPECT_EQ(result.entries.Count(), says.find(L"cannot be used") == std::wstring::npos ? 1 : 0) << lines;
        EXPECT_EQ(Lines(result.problems), says) << lines;
        EXPECT_TRUE(result.entries.Count() == 0 || result.entries.At(0)->role == RedundantDasRole::Standalone) << lines;
    }
    for (const char* quiet : {"SiteID=", "SiteID=\" \""}) {  // a section without a site is none
        const Result result = ReadFile(Section(3, quiet));
        EXPECT_EQ(result.entries.Count() + static_cast<int>(result.problems.size()), 0);
    }
}

TEST(DahsSection, BlankConnectionStringsMayBeAllowed) {
    const Result result =
        ReadFile("[Dahs1]\nSiteID=AB\nDahsComputerName=c\nVantorDir=D:\\V\nBackupDir=b\n" + Section(2, "SiteID=9"),
                 BlankConnections::AllowEntry);
    ASSERT_EQ(result.entries.Count(), 1);
    EXPECT_EQ(result.problems.size(), 7u);
    EXPECT_EQ(result.problems.back(), L"STR-031: DAHS2 in 'F' cannot be used because one or more entries are invalid");
    EXPECT_EQ(result.entries.At(0)->connectionStrings[ConnectionForm::DotNet][Database::Alarms], L"");
}

TEST(DahsSection, AutoOutput) {
    const std::tuple<std::string, AutoOutput, std::int32_t> cases[] = {
        {"1", AutoOutput::Enabled, 60},
        {"0", AutoOutput::Disabled, 60},
        {"1,30", AutoOutput::Enabled, 60},
        {"(0)", AutoOutput::Disabled, 60},
        {"true", AutoOutput::Enabled, 60},
        {"False", AutoOutput::Disabled, 60},
        {"Fasle,5", AutoOutput::Disabled, 5},
        {"auto_secondary,30", AutoOutput::AutoSecondaryDas, 30},
        {"Auto-Primary, 2.5 ,x", AutoOutput::AutoPrimaryDas, 2},
        {"-auto_dahs-ID,3.5", AutoOutput::AutoDahsId, 4},
        {"AutoDasID,&H10", AutoOutput::AutoDahsId, 16},
        {"yes,-5", AutoOutput::Enabled, 0},
        {"no,3000000000", AutoOutput::Disabled, 0},
        {"maybe,9", AutoOutput::Unknown, 9}};
    for (const auto& [value, setting, timeout] : cases) {
        const DahsEntry entry = ReadEntry("AutoOutputEnabled=" + value);
        EXPECT_EQ(entry.autoOutput, setting) << value;
        EXPECT_EQ(entry.autoOutputTimeout, timeout) << value;
        EXPECT_EQ(entry.AutoOutputEnabled(), setting != AutoOutput::Disabled) << value;
    }
    EXPECT_EQ(ReadEntry("").autoOutput, AutoOutput::Unknown);
    EXPECT_EQ(ReadEntry("").autoOutputTimeout, 60);
}

TEST(DahsSection, Switches) {
    const struct {
        const char* key;
        decltype(&DahsEntry::hdrEnabled) field;
        bool preset;  // whatever is no clear word for the other
    } switches[] = {{"HDR", &DahsEntry::hdrEnabled, true},
                    {"TraceEnabled", &DahsEntry::extraTraceMsgsEnabled, true},
                    {"LogFlushEnabled", &DahsEntry::logFlushEnabled, true},
                    {"RedundantDasSyncStagingEnabled", &DahsEntry::syncStagingEnabled, false},
                    {"RedundantDasSyncCompareEnabled", &DahsEntry::syncCompareEnabled, false},
                    {"RedundantDASSyncMergeEnabled", &DahsEntry::syncMergeEnabled, false}};
    for (const auto& [key, field, preset] : switches) {
        for (const char* no : {"fasle", "No", "FALSE", "0", "&H0", "(0.0)"}) {
            EXPECT_FALSE(ReadEntry(key + std::string("=") + no).*field) << key << no;
        }
        for (const char* yes : {"true", "YES", "-1", "2", "0.1"}) {
            EXPECT_TRUE(ReadEntry(key + std::string("=") + yes).*field) << key << yes;
        }
        for (const char* other : {"", "on", "off", "1e999"}) {
            EXPECT_EQ(ReadEntry(key + std::string("=") + other).*field, preset) << key << other;
        }
    }
}

TEST(DahsSection, Texts) {
    const DahsEntry entry = ReadEntry(
        "SiteID=\x22 abc \x22\nLanguageID= en \nDahsDescription={Optional dahs description}\n"
        "ReportsURL=http://x/y?a=b\nVantorDir=D:\\V\\\nRedundantDasRole=sec-ond_ary\n"
        "DRCurrentHealthTimeouts= 1, 2 ; 3 4");
    EXPECT_EQ(entry.siteID + L"|" + entry.languageId + L"|" + entry.description + L"|" + entry.reportsUrl + L"|" +
                  entry.logsDir + L"|" + entry.primaryBackupDir + L"|" + entry.drCurrentHealthTimeouts,
              L"ABC|en||http://x/y?a=b|D:\\V\\\\Logs|E:\\B|1,2;34");  // the folder is taken as it stands
    EXPECT_EQ(entry.role, RedundantDasRole::Secondary);
    EXPECT_EQ(ReadEntry("").role, RedundantDasRole::Standalone);
}

TEST(DahsSection, ConnectionStrings) {
    const auto at = [](const DahsEntry& entry, ConnectionForm form, Database database) {
        return entry.connectionStrings[form][database];
    };
    const DahsEntry derived = ReadEntry(
        "SQLData=PROVIDER=p;Server=s;Database=Vantor5Data;Pwd=xProviderY;datatypecompatibility=80\n"
        "SQLConfigNoninteractive=Provider=q;c\nSQLAlarms=alarms\nSQLAlarms.NET=own");
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
    size_t i = 0;
    for (const std::string form : {"", "Noninteractive", ".NET", "Noninteractive.NET"}) {
        for (const char* database : {"Alarms", "Config", "Data", "DataShortTerm", "Realtime", "Ostra"}) {
            const auto index = static_cast<ConnectionForm>(i / kDatabaseCount);
            EXPECT_EQ(at(ReadEntry("SQL" + (database + form) + "=own"), index, kDatabases[i % kDatabaseCount]), L"own");
            ++i;
        }
    }
}

TEST(DahsSection, AffinityMasks) {
    const Result result = ReadFile("[AffinityMasks]\nIOS=0x0F\nDR= &h3 \nDM=0XF\nRG=0xFFFFFFFF\nDBE=12\n" + Section(1));
    ASSERT_EQ(result.entries.Count(), 1);
    for (const auto& [category, mask] : {std::pair(AppCategory::Ios, 15),
                                         {AppCategory::Dr, 3},
                                         {AppCategory::Dm, 0},
                                         {AppCategory::Rg, -1},
                                         {AppCategory::Dbe, 12},
                                         {AppCategory::NotApplicable, 0}}) {
        EXPECT_EQ(result.entries.At(0)->affinityMasks[category], mask);
    }
}

TEST(DahsSection, SectionsFrom1To99AreReadInOrder) {
    const DahsEntryList entries =
        ReadFile(Section(100) + Section(99) + Section(7) + Section(0) + Section(2) + "[Dahs01" + Section(1).substr(6))
            .entries;
    ASSERT_EQ(entries.Count(), 3);
    const int ids[] = {2, 7, 99};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(entries.At(i)->dahsID, ids[i]);
        EXPECT_EQ(entries.Find(ids[i]), entries.At(i));
    }
    EXPECT_TRUE(entries.Find(1) == nullptr && entries.At(3) == nullptr && entries.At(-1) == nullptr);
}

}  // namespace v5
