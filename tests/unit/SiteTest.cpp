#include "config/Site.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "FakeSiteHost.h"
#include "config/SiteFileSearch.h"

namespace v5 {

namespace {

using Problems = std::vector<std::wstring>;

const std::wstring kFound = L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'\n";

}  // namespace

// Whatever form the start has: the file that is found has a full path.
TEST(SiteFileSearch, FindsAFullPathFromEveryStart) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\Site\\a\\b", L"C:\\Site\\Vantor5.INI"}, {L"\\\\?\\C:\\a", L"\\\\?\\C:\\Vantor5.INI"},
        {L"\\\\?\\C:\\", L"\\\\?\\C:\\Vantor5.INI"},   {L"a", L"C:\\Site\\a\\Vantor5.INI"},
        {L"a\\missing", L"C:\\Site\\Vantor5.INI"},     {L"readme.txt", L"C:\\Site\\Vantor5.INI"},
        {L"missing", L"C:\\Program\\Bin\\Vantor5.INI"}};
    for (const auto& [start, file] : cases) {
        FakeSiteHost host;
        host.folders.insert({L"a", L"C:\\Site\\a\\b", L"\\\\?\\C:\\a", L"\\\\?\\C:\\"});
        host.files = {{file, ""}, {L"readme.txt", ""}};
        EXPECT_EQ(FindSiteFile(start, host), file);
    }
}

TEST(SiteFileSearch, ParentFolders) {
    const std::wstring cases =  // path > parent
        LR"(C:\a\b>C:\a|C:\a\>C:\|C:\a>C:\|C:\>|C:>|C:a>C:|C:/a/b>C:/a|\a>\|\>|a>|a\\b>a|C:\\\>|>|\\srv\x\y>\\srv\x|)"
        LR"(\\srv\x>\\srv|\\srv>|\\?\C:\a\b>\\?\C:\a|\\?\C:\a>\\?\C:\|\\?\C:\>|%VANTOR5_SYSTEM_FOLDER%>)";
    for (const std::wstring& row : Split(cases, L'|')) {
        EXPECT_EQ(ParentFolder(row.substr(0, row.find(L'>'))), row.substr(row.find(L'>') + 1));
    }
    for (std::wstring path : {L"\\\\?\\C:\\a\\..\\.\\", L"\\\\\\\\\\", L":::\\\\:", L"//a//b//", L"C:\\C:\\"}) {
        for (size_t steps = path.size() + 1; !path.empty(); --steps) {
            ASSERT_NE(steps, 0u);
            path = ParentFolder(path);
        }
    }
}

TEST(SiteFileSearch, WhatIsSaid) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\Site", L"C:\\Site\\Vantor5.INI", L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'\n"},
        {L"C:\\Site", L"C:\\Vantor5.INI", L"STR-0183: found INI file 'C:\\Vantor5.INI'\n"},
        {L"C:\\Site\\Gone", L"C:\\Site\\Vantor5.INI", L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'\n"},
        {L"C:\\Site\\Vantor5.INI", L"C:\\Site\\Vantor5.INI", L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'\n"},
        {L"", L"C:\\Program\\Vantor5.INI", L"STR-0183: found INI file 'C:\\Program\\Vantor5.INI'\n"},
        {L"C:\\Site", L"C:\\Program\\Bin\\Vantor5.INI",
         L"STR-0184: Could not find Vantor5.INI file in 'C:\\Site' or parent folders\n"
         L"STR-094: found INI file 'C:\\Program\\Bin\\Vantor5.INI'\n"},
        {L"", nullptr,
         L"STR-0184: Could not find Vantor5.INI file in '%VANTOR5_SYSTEM_FOLDER%' or parent folders\n"
         L"STR-018: Could not find Vantor5.INI file in 'C:\\Program\\Bin' or parent folders\n"}};
    for (const auto& [systemFolder, file, says] : cases) {
        SiteBench bench("");
        bench.host.systemFolder = systemFolder;
        bench.host.folders.insert({L"C:\\Program", L"C:\\Program\\Bin"});
        bench.host.files = {{file != nullptr ? file : L"C:\\Other\\Vantor5.INI", Section(1)}};
        EXPECT_EQ(bench.Read(), file != nullptr);
        EXPECT_EQ(Lines(bench.site.Problems()), says);
        EXPECT_EQ(bench.site.FilePath(), file != nullptr ? file : L"");
    }
}

TEST(Site, ReadsOnceAndReportsWhatCannotBeRead) {
    SiteBench sound(Section(1));
    EXPECT_TRUE(sound.Read() && sound.site.HasEntriesFromFile());
    EXPECT_FALSE(sound.Read() || sound.site.SetupForced(L"X"));
    EXPECT_EQ(Lines(sound.site.Problems()), kFound +
                                                L"STR-017: this instance has already been set up\n"
                                                L"STR-0175: this instance has already been set up\n");
    EXPECT_EQ(sound.site.Current().entry->siteID, L"AB");

    SiteBench empty("[Dahs1]\n");
    EXPECT_FALSE(empty.Read() || empty.site.HasEntriesFromFile());
    EXPECT_EQ(Lines(empty.site.Problems()), kFound + L"STR-031: no DAHS entries found in 'C:\\Site\\Vantor5.INI'\n");

    SiteBench named("");
    named.host.files[L"D:\\other.ini"] = Section(1);
    EXPECT_TRUE(named.site.ReadFrom(L"D:\\other.ini", AppCategory::NotApplicable, false, false, {}));
    EXPECT_EQ(named.site.FilePath(), L"D:\\other.ini");

    SiteBench locked(Section(1));
    locked.host.machine.failing = "ReadFile";
    EXPECT_FALSE(locked.Read());
    EXPECT_EQ(Lines(locked.site.Problems()),
              kFound + L"Could not read INI file 'C:\\Site\\Vantor5.INI': Access is denied.\n");
}

TEST(Site, ForcedEntryGoesWithoutAFile) {
    FakeSiteHost host;
    Site site(host);
    EXPECT_TRUE(site.SetupForced(L"xy"));
    EXPECT_EQ(Lines(site.Problems()),
              L"STR-0176: This instance can only be used for compile validation\n"
              L"STR-0177: Will use certain defaults instead of looking for Vantor5.INI\n");
    EXPECT_TRUE(Lines(site.InfoTexts(0))
                    .starts_with(L"ActualVantorINI=\nDahsEntries.Count=1\nDahsID=888\nSiteID=xy\nLanguageId=\n"
                                 L"DahsComputerName=DAS1\nDahsDescription=For compile validation only\n"
                                 L"LocalComputerName=DAS1\nHDREnabled=False\nAutoOutputEnabled=False\n"
                                 L"AutoOutputEnabledEx=0\n"));
    EXPECT_FALSE(site.Current().isRemote || site.Current().entry->AutoOutputEnabled() || site.HasEntriesFromFile());
    EXPECT_FALSE(site.SetupForced(L"z"));
    EXPECT_EQ(site.Problems().back(), L"STR-0175: this instance has already been set up");
}

TEST(Site, Choosing) {
    SiteBench bench(Section(2, "SiteID=cd\nSQLAlarmsNoninteractive=batch") +
                    Section(4, "SiteID=ab\nSQLAlarmsNoninteractive=batch") +
                    Section(5, "SiteID=ab\nDahsComputerName=far") + Section(7, "SiteID=abcdefghijkl") +
                    Section(8, "SiteID=ABCDEFGHIJ"));
    Site& site = bench.site;
    EXPECT_FALSE(site.Choose(0, false, false) || site.ChooseSite(L" ", false, false));
    EXPECT_EQ(Lines(site.Problems()), L"STR-029: no DAHS is defined\nSTR-163: no DAHS is defined\n");
    ASSERT_TRUE(bench.Read());
    const std::wstring oleDb = L"Provider=p;Pwd=x;alarms", dotNet = L"Pwd=x;alarms";
    const std::tuple<int, bool, bool, int, std::wstring> steps[] = {
        {2, false, false, 2, oleDb},   {5, false, false, 5, oleDb}, {6, true, true, 5, oleDb},
        {4, true, false, 4, L"batch"}, {4, false, true, 4, dotNet}, {4, true, true, 4, L"batch"},
        {0, false, false, 2, oleDb}};
    for (const auto& [id, isNoninteractive, isDotNet, current, alarms] : steps) {
        EXPECT_EQ(site.Choose(id, isNoninteractive, isDotNet), id == 0 || id == current);
        EXPECT_EQ(site.Current().entry->dahsID, current);
        EXPECT_EQ(site.Current().isRemote, current == 5);
        EXPECT_EQ(site.Current().connections[Database::Alarms], alarms);
    }
    for (const auto& [name, current] : {std::pair(L" ab ", 4), {L"abcdefghijkl", 8}, {L"", 2}, {L"zzzzzzzzzzzz", 2}}) {
        EXPECT_EQ(site.ChooseSite(name, false, false), *name != L'z');
        EXPECT_EQ(site.Current().entry->dahsID, current);
    }
    EXPECT_EQ(site.Problems().back(), L"STR-164: no DAHS is defined for site ID 'ZZZZZZZZZZ'");
}

TEST(Site, RedundantDases) {
    const std::string primary = "RedundantDasRole=primary\nSiteID=", secondary = "RedundantDasRole=secondary\nSiteID=";
    SiteBench bench(Section(1, primary + "AB\nDahsComputerName=far") + Section(2, secondary + "AB") +
                    Section(3, "SiteID=CD") + Section(4, secondary + "EF") + Section(5, secondary + "EF") +
                    Section(6, primary + "GH") + Section(7, "SiteID=GH") + Section(8, secondary + "GH"));
    ASSERT_TRUE(bench.Read());
    const std::tuple<const wchar_t*, std::int32_t, std::int32_t, std::int32_t> cases[] = {
        {L"ab", 0, 1, 2}, {L"", 2, 1, 2},   {L"CD", 1, 1, 2}, {L"CD", 0, 3, 0},  {L"AB", 3, 3, 0}, {L"ef", 0, 5, 0},
        {L"", 4, 5, 0},   {L"GH", 0, 7, 0}, {L"", 6, 7, 0},   {L"CD", 50, 3, 0}, {L"??", 0, 0, 0}};
    for (const auto& [site, initial, first, second] : cases) {
        const RedundantDasIds ids = bench.site.FindRedundantDasIds(site, initial);
        EXPECT_EQ(std::pair(ids.primary, ids.secondary), std::pair(first, second)) << initial;
    }
    EXPECT_EQ(bench.site.FindLocalDahsId(false), 2);
    EXPECT_EQ(bench.site.FindLocalDahsId(true), 1);
    SiteBench second(Section(1, "SiteID=CD\nDahsComputerName=far") + Section(2, secondary + "AB") +
                     Section(3, primary + "AB"));
    ASSERT_TRUE(second.Read());
    EXPECT_EQ(second.site.FindLocalDahsId(true), 3);
    EXPECT_EQ(bench.site.Entries()->CountOfNonSecondary(), 4);
    EXPECT_EQ(SiteBench("").site.FindLocalDahsId(true), 0);
    std::wstring roles;
    for (int role = -1; role < 4; ++role) {
        roles += RedundantDasRoleText(static_cast<RedundantDasRole>(role));
    }
    EXPECT_EQ(roles, L"??StandalonePrimarySecondary??");
}

TEST(Site, ReportsUrlIsNeededWhenAConnectionIsMissing) {
    for (const auto& [lines, needed] : {std::pair("ReportsURL=u\nSQLRealtime=", true),
                                        {"ReportsURL=u", false},
                                        {"SQLRealtime=", false},
                                        {"ReportsURL=u\nSQLData=", true}}) {
        SiteBench bench(Section(1, lines));
        ASSERT_TRUE(bench.Read(AppCategory::NotApplicable, BlankConnections::AllowEntry));
        EXPECT_EQ(bench.site.Current().MustUseReportsUrl(), needed) << lines;
    }
}

TEST(Site, Affinity) {
    const std::wstring failed = L"STR-083: can't set affinity mask\n";
    const struct {
        const char* mask;
        AppCategory category;
        std::optional<std::uint64_t> system;
        std::uint64_t set;
        std::wstring says;
        const char* failing = "";
    } cases[] = {{"0x1A", AppCategory::Dm, 0xF, 0xA, L"STR-082: set process affinity mask = &H1A\n"},
                 {"-1", AppCategory::Dm, 0xF, 0xF, L"STR-082: set process affinity mask = &HFFFFFFFF\n"},
                 {"0x10", AppCategory::Dm, 0xF, 0, failed},
                 {"1", AppCategory::Dm, {}, 0, failed},
                 {"1", AppCategory::Dm, 0xF, 1, failed, "SetProcessAffinityMask"},
                 {"0", AppCategory::Dm, 0xF, 0, L""},
                 {"1", AppCategory::Rg, 0xF, 0, L""},
                 {"1", AppCategory::NotApplicable, 0xF, 0, L""},
                 {"1", static_cast<AppCategory>(6), 0xF, 0, L""},
                 {"1", static_cast<AppCategory>(-1), 0xF, 0, L""}};
    for (const auto& c : cases) {
        SiteBench bench(Section(1) + "[AffinityMasks]\nDM=" + c.mask);
        bench.host.systemMask = c.system;
        bench.host.machine.failing = c.failing;
        EXPECT_TRUE(bench.Read(c.category));
        EXPECT_EQ(bench.host.affinitySet, c.set) << c.mask;
        EXPECT_EQ(Lines(bench.site.Problems()), kFound + c.says);
    }
}

TEST(Site, Folders) {
    SiteBench bench(Section(1, "VantorDir=D:\\Vantor\\\nBackupDir=E:\\Backup\\"));
    bench.host.folders.insert(L"D:\\Vantor");
    ASSERT_TRUE(bench.Read());
    EXPECT_EQ(bench.host.created, (Problems{L"D:\\Vantor\\\\Logs", L"D:\\Vantor\\\\Logs\\MailLogs",
                                            L"C:\\Site\\CustomReportTemplates", L"D:\\Vantor\\SecondaryBackup"}));
    EXPECT_EQ(bench.site.Current().PadepReportDir(), L"D:\\Vantor\\PADEP Reports");
    EXPECT_EQ(bench.site.Current().folders.temp, L"C:\\Windows\\Temp");
    bench.host.folders.insert(L"D:\\Vantor\\Temp");
    EXPECT_TRUE(bench.site.Choose(1, false, false));
    EXPECT_EQ(bench.site.Current().folders.temp, L"D:\\Vantor\\Temp");

    SiteBench refused(Section(1, "VantorDir=D:\\Vantor\nLogsDir=D:\\Logs\\"));
    refused.host.refusedFolder = L"D:\\Logs";
    EXPECT_TRUE(refused.Read());
    EXPECT_EQ(refused.host.created, Problems{L"D:\\Vantor"});
    EXPECT_EQ(refused.site.Problems().back(), L"Could not create folder 'D:\\Logs': Access is denied.");
}

TEST(Site, InfoTexts) {
    SiteBench bench(Section(7,
                            "HDR=no\nRedundantDasRole=primary\nLanguageID=de\nDahsDescription=a\tb\nLogsDir=L\n"
                            "AutoOutputEnabled=Auto-Primary,9\nRedundantDasSyncCompareEnabled=1\n"
                            "DRCurrentHealthTimeouts=1,2\nTraceEnabled=0\nReportsURL=http://r"));
    ASSERT_TRUE(bench.Read());
    EXPECT_EQ(Lines(bench.site.InfoTexts(2)),
              L"ActualVantorINI=C:\\Site\\Vantor5.INI\nDahsEntries.Count=1\nDahsID=7\nSiteID=AB\nLanguageId=de\n"
              L"DahsComputerName=das1\nDahsDescription=a\nb\nLocalComputerName=DAS1\nHDREnabled=False\n"
              L"AutoOutputEnabled=True\nAutoOutputEnabledEx=2\nAutoOutputEnabledExRedundantDasTimeout=9\n"
              L"RedundantDasRole=1\nRedundantDasSyncStagingEnabled=False\nRedundantDasSyncCompareEnabled=True\n"
              L"RedundantDASSyncMergeEnabled=False\nDRCurrentHealthTimeouts=1,2\nExtraTraceMsgsEnabled=False\n"
              L"LogFlushEnabled=True\nVantorDir=D:\\V\nVantorSystemDir=C:\\Site\nVantorLogsDir=L\n"
              L"VantorCustomReportTemplatesDir=C:\\Site\\CustomReportTemplates\nPrimaryBackupDir=E:\\B\n"
              L"SecondaryBackupDir=D:\\V\\SecondaryBackup\nTempDir=C:\\Windows\\Temp\n"
              L"SqlConnectionString_Alarms=Provider=p;Pwd=x;alarms\nSqlConnectionString_Config=config\n"
              L"SqlConnectionString_Data=Server=s;Database=Vantor5Data\nSqlConnectionString_DataShortTerm=short\n"
              L"SqlConnectionString_Realtime=realtime\n"
              L"SqlConnectionString_Ostra=Server=s;Database=Vantor5Ostra\nReportsURL=http://r\n\n\n\n");
    EXPECT_EQ(SiteBench("").site.InfoTexts(-5).size(), 34u);
    try {
        bench.site.InfoTexts(16 * 1024 * 1024 + 1);
        ADD_FAILURE();
    } catch (const AutomationError& error) {
        EXPECT_EQ(std::pair(error.Number(), error.Description()), std::pair(7, std::wstring(L"Out of memory")));
    }
}

}  // namespace v5
