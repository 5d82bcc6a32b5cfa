#include "config/Site.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakeSiteHost.h"
#include "config/SiteFileSearch.h"

namespace v5 {

namespace {

using Problems = std::vector<std::wstring>;

std::string Section(int number, const std::string& site, const std::string& lines = "") {
    return "[Dahs" + std::to_string(number) + "]\nSiteID=" + site + "\n" + lines +
           "\nDahsComputerName=das1\nVantorDir=D:\\Vantor\\\nBackupDir=E:\\Backup\\\nSQLAlarms=Provider=p;alarms\n"
           "SQLConfig=c\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\nSQLAlarmsNoninteractive=batch\n";
}

struct SiteFixture {
    FakeSiteHost host;
    Site site{host};

    explicit SiteFixture(const std::string& file) { host.files[L"C:\\Site\\Vantor5.INI"] = file; }

    bool Read(AppCategory category = AppCategory::NotApplicable) {
        return site.Read(category, false, false, BlankConnections::IgnoreEntry);
    }
};

}  // namespace

// Whatever form the start has: the file that is found has a full path.
TEST(SiteFileSearch, FindsAFullPathFromEveryStart) {
    const struct {
        const wchar_t* start;
        const wchar_t* file;
    } cases[] = {{L"C:\\Site\\a\\b", L"C:\\Site\\Vantor5.INI"}, {L"\\\\?\\C:\\a", L"\\\\?\\C:\\Vantor5.INI"},
                 {L"\\\\?\\C:\\", L"\\\\?\\C:\\Vantor5.INI"},   {L"a", L"C:\\Site\\a\\Vantor5.INI"},
                 {L"a\\missing", L"C:\\Site\\Vantor5.INI"},     {L"readme.txt", L"C:\\Site\\Vantor5.INI"},
                 {L"missing", L"C:\\Program\\Bin\\Vantor5.INI"}};
    for (const auto& each : cases) {
        FakeSiteHost host;
        host.folders.insert({L"a", L"C:\\Site\\a\\b", L"\\\\?\\C:\\a", L"\\\\?\\C:\\"});
        host.files = {{each.file, ""}, {L"readme.txt", ""}};
        EXPECT_EQ(FindSiteFile(each.start, host), each.file);
    }
}

TEST(SiteFileSearch, ParentFolders) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {{L"C:\\a\\b", L"C:\\a"},
                                                               {L"C:\\a\\", L"C:\\"},
                                                               {L"\\\\?\\C:\\a\\b", L"\\\\?\\C:\\a"},
                                                               {L"\\\\?\\C:\\a", L"\\\\?\\C:\\"},
                                                               {L"\\\\?\\C:\\", L""},
                                                               {L"C:\\a", L"C:\\"},
                                                               {L"C:\\", L""},
                                                               {L"C:", L""},
                                                               {L"C:a", L"C:"},
                                                               {L"C:/a/b", L"C:/a"},
                                                               {L"\\\\srv\\x\\y", L"\\\\srv\\x"},
                                                               {L"\\\\srv\\x", L"\\\\srv"},
                                                               {L"\\\\srv", L""},
                                                               {L"\\a", L"\\"},
                                                               {L"\\", L""},
                                                               {L"a", L""},
                                                               {L"a\\\\b", L"a"},
                                                               {L"%VANTOR5_SYSTEM_FOLDER%", L""},
                                                               {L"C:\\\\\\", L""},
                                                               {L"", L""}};
    for (const auto& [path, parent] : cases) {
        EXPECT_EQ(ParentFolder(path), parent) << std::string(path, path + std::wcslen(path));
    }
    for (std::wstring path : {L"\\\\?\\C:\\a\\..\\.\\", L"\\\\\\\\\\", L":::\\\\:", L"//a//b//", L"C:\\C:\\"}) {
        for (size_t steps = path.size() + 1; !path.empty(); --steps) {
            ASSERT_NE(steps, 0u);
            path = ParentFolder(path);
        }
    }
}

TEST(SiteFileSearch, StartFolders) {
    struct Case {
        const wchar_t* name;
        const wchar_t* systemFolder;
        const wchar_t* file;
        Problems problems;
    };
    const std::wstring notFound = L"' or parent folders";
    const Case cases[] = {
        {L"in the folder",
         L"C:\\Site",
         L"C:\\Site\\Vantor5.INI",
         {L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'"}},
        {L"above it", L"C:\\Site", L"C:\\Vantor5.INI", {L"STR-0183: found INI file 'C:\\Vantor5.INI'"}},
        {L"folder that is gone",
         L"C:\\Site\\Gone",
         L"C:\\Site\\Vantor5.INI",
         {L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'"}},
        {L"the file itself",
         L"C:\\Site\\Vantor5.INI",
         L"C:\\Site\\Vantor5.INI",
         {L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'"}},
        {L"no variable", L"", L"C:\\Program\\Vantor5.INI", {L"STR-0183: found INI file 'C:\\Program\\Vantor5.INI'"}},
        {L"beside the library",
         L"C:\\Site",
         L"C:\\Program\\Bin\\Vantor5.INI",
         {L"STR-0184: Could not find Vantor5.INI file in 'C:\\Site" + notFound,
          L"STR-094: found INI file 'C:\\Program\\Bin\\Vantor5.INI'"}},
        {L"nowhere",
         L"",
         L"C:\\Other\\Vantor5.INI",
         {L"STR-0184: Could not find Vantor5.INI file in '%VANTOR5_SYSTEM_FOLDER%" + notFound,
          L"STR-018: Could not find Vantor5.INI file in 'C:\\Program\\Bin" + notFound}}};
    for (const Case& c : cases) {
        FakeSiteHost host;
        host.systemFolder = c.systemFolder;
        host.folders.insert({L"C:\\Program", L"C:\\Program\\Bin"});
        host.files[c.file] = Section(1, "AB");
        Site site(host);
        const bool found = c.problems.back().find(L"found INI file") != std::wstring::npos;
        EXPECT_EQ(site.Read(AppCategory::NotApplicable, false, false, BlankConnections::IgnoreEntry), found);
        EXPECT_EQ(site.Problems(), c.problems);
        EXPECT_EQ(site.FilePath(), found ? c.file : L"");
    }
}

TEST(Site, ReadsOnceAndReportsWhatCannotBeRead) {
    SiteFixture sound(Section(1, "AB"));
    EXPECT_TRUE(sound.Read());
    EXPECT_TRUE(sound.site.HasEntriesFromFile());
    EXPECT_FALSE(sound.Read());
    EXPECT_EQ(sound.site.Problems().back(), L"STR-017: this instance has already been set up");
    EXPECT_FALSE(sound.site.SetupForced(L"X"));
    EXPECT_EQ(sound.site.Problems().back(), L"STR-0175: this instance has already been set up");
    EXPECT_EQ(sound.site.Current().entry->siteID, L"AB");

    SiteFixture empty("[Dahs1]\n");
    EXPECT_FALSE(empty.Read());
    EXPECT_FALSE(empty.site.HasEntriesFromFile());
    EXPECT_EQ(empty.site.Problems().back(), L"STR-031: no DAHS entries found in 'C:\\Site\\Vantor5.INI'");

    SiteFixture locked(Section(1, "AB"));
    locked.host.machine.failing = "ReadFile";
    EXPECT_FALSE(locked.Read());
    EXPECT_EQ(locked.site.Problems().back(), L"Could not read INI file 'C:\\Site\\Vantor5.INI': Access is denied.");
}

TEST(Site, ForcedEntryGoesWithoutAFile) {
    FakeSiteHost host;
    Site site(host);
    EXPECT_TRUE(site.SetupForced(L"xy"));
    EXPECT_EQ(site.Problems(), (Problems{L"STR-0176: This instance can only be used for compile validation",
                                         L"STR-0177: Will use certain defaults instead of looking for Vantor5.INI"}));
    const DahsEntry& entry = *site.Current().entry;
    EXPECT_EQ(entry.dahsID, 888);
    EXPECT_EQ(entry.siteID, L"xy");
    EXPECT_EQ(entry.computerName, L"DAS1");
    EXPECT_FALSE(site.Current().isRemote || entry.AutoOutputEnabled() || site.HasEntriesFromFile());
    EXPECT_EQ(site.Entries()->Count(), 1);
}

TEST(Site, Choosing) {
    SiteFixture fixture(Section(2, "cd") + Section(4, "ab") + Section(5, "ab", "DahsComputerName=far") +
                        Section(7, "abcdefghijkl") + Section(8, "ABCDEFGHIJ"));
    Site& site = fixture.site;
    EXPECT_FALSE(site.Choose(0, false, false));
    EXPECT_FALSE(site.ChooseSite(L" ", false, false));
    EXPECT_EQ(site.Problems(), (Problems{L"STR-029: no DAHS is defined", L"STR-163: no DAHS is defined"}));
    ASSERT_TRUE(fixture.Read());
    EXPECT_EQ(site.Current().entry->dahsID, 2);

    EXPECT_TRUE(site.Choose(5, false, false));
    EXPECT_TRUE(site.Current().isRemote);
    EXPECT_EQ(site.Current().connections[Database::Alarms], L"Provider=p;alarms");
    EXPECT_FALSE(site.Choose(6, true, true));
    EXPECT_EQ(site.Current().entry->dahsID, 5);
    EXPECT_EQ(site.Current().connections[Database::Alarms], L"Provider=p;alarms");
    EXPECT_TRUE(site.Choose(4, true, false));
    EXPECT_EQ(site.Current().connections[Database::Alarms], L"batch");
    EXPECT_TRUE(site.Choose(4, false, true));
    EXPECT_EQ(site.Current().connections[Database::Alarms], L"alarms");
    EXPECT_TRUE(site.Choose(4, true, true));
    EXPECT_EQ(site.Current().connections[Database::Alarms], L"batch");
    EXPECT_TRUE(site.Choose(0, false, false));
    EXPECT_EQ(site.Current().entry->dahsID, 2);

    EXPECT_TRUE(site.ChooseSite(L" ab ", false, false));
    EXPECT_EQ(site.Current().entry->dahsID, 4);
    EXPECT_TRUE(site.ChooseSite(L"abcdefghijkl", false, false));
    EXPECT_EQ(site.Current().entry->dahsID, 8);
    EXPECT_TRUE(site.ChooseSite(L"", false, false));
    EXPECT_EQ(site.Current().entry->dahsID, 2);
    EXPECT_FALSE(site.ChooseSite(L"zzzzzzzzzzzz", false, false));
    EXPECT_EQ(site.Problems().back(), L"STR-164: no DAHS is defined for site ID 'ZZZZZZZZZZ'");
}

TEST(Site, RedundantDases) {
    const std::string primary = "RedundantDasRole=primary";
    const std::string secondary = "RedundantDasRole=secondary";
    SiteFixture fixture(Section(1, "AB", primary + "\nDahsComputerName=far") + Section(2, "AB", secondary) +
                        Section(3, "CD") + Section(4, "EF", secondary) + Section(5, "EF", secondary) +
                        Section(6, "GH", primary) + Section(7, "GH") + Section(8, "GH", secondary));
    ASSERT_TRUE(fixture.Read());
    struct Case {
        const wchar_t* site;
        std::int32_t initial, primary, secondary;
    };
    for (const Case& c :
         {Case{L"ab", 0, 1, 2}, Case{L"", 2, 1, 2}, Case{L"CD", 0, 3, 0}, Case{L"AB", 3, 3, 0}, Case{L"ef", 0, 5, 0},
          Case{L"", 4, 5, 0}, Case{L"GH", 0, 7, 0}, Case{L"", 6, 7, 0}, Case{L"CD", 50, 3, 0}, Case{L"??", 0, 0, 0}}) {
        const RedundantDasIds ids = fixture.site.FindRedundantDasIds(c.site, c.initial);
        EXPECT_EQ(ids.primary, c.primary) << c.initial;
        EXPECT_EQ(ids.secondary, c.secondary) << c.initial;
    }
    EXPECT_EQ(fixture.site.FindLocalDahsId(false), 2);
    EXPECT_EQ(fixture.site.FindLocalDahsId(true), 1);
    EXPECT_EQ(fixture.site.Entries()->CountOfNonSecondary(), 4);
    EXPECT_EQ(SiteFixture("").site.FindLocalDahsId(true), 0);
    EXPECT_EQ(RedundantDasRoleText(RedundantDasRole::Secondary), L"Secondary");
    EXPECT_EQ(RedundantDasRoleText(static_cast<RedundantDasRole>(3)), L"??");
}

TEST(Site, ReportsUrlIsNeededWhenAConnectionIsMissing) {
    for (const auto& [lines, needed] : {std::pair("ReportsURL=u\nSQLRealtime=", true), std::pair("ReportsURL=u", false),
                                        std::pair("SQLRealtime=", false), std::pair("ReportsURL=u\nSQLData=", true)}) {
        SiteFixture fixture(Section(1, "AB", lines));
        ASSERT_TRUE(fixture.site.Read(AppCategory::NotApplicable, false, false, BlankConnections::AllowEntry));
        EXPECT_EQ(fixture.site.Current().MustUseReportsUrl(), needed) << lines;
    }
}

TEST(Site, Affinity) {
    struct Case {
        const char* mask;
        AppCategory category;
        std::optional<std::uint64_t> system;
        bool refused;
        std::uint64_t set;
        const wchar_t* problem;
    };
    const wchar_t* const failed = L"STR-083: can't set affinity mask";
    for (const Case& c :
         {Case{"0x1A", AppCategory::Dm, 0xF, false, 0xA, L"STR-082: set process affinity mask = &H1A"},
          Case{"-1", AppCategory::Dm, 0xF, false, 0xF, L"STR-082: set process affinity mask = &HFFFFFFFF"},
          Case{"0x10", AppCategory::Dm, 0xF, false, 0, failed},
          Case{"1", AppCategory::Dm, std::nullopt, false, 0, failed}, Case{"1", AppCategory::Dm, 0xF, true, 1, failed},
          Case{"0", AppCategory::Dm, 0xF, false, 0, nullptr}, Case{"1", AppCategory::Rg, 0xF, false, 0, nullptr},
          Case{"1", AppCategory::NotApplicable, 0xF, false, 0, nullptr},
          Case{"1", static_cast<AppCategory>(6), 0xF, false, 0, nullptr},
          Case{"1", static_cast<AppCategory>(-1), 0xF, false, 0, nullptr}}) {
        SiteFixture fixture(Section(1, "AB") + "[AffinityMasks]\nDM=" + c.mask);
        fixture.host.systemMask = c.system;
        fixture.host.machine.failing = c.refused ? "SetProcessAffinityMask" : "";
        EXPECT_TRUE(fixture.Read(c.category));
        EXPECT_EQ(fixture.host.affinitySet, c.set) << c.mask;
        EXPECT_EQ(fixture.site.Problems().size(), c.problem != nullptr ? 2u : 1u) << c.mask;
        EXPECT_EQ(fixture.site.Problems().back(),
                  c.problem != nullptr ? c.problem : L"STR-0183: found INI file 'C:\\Site\\Vantor5.INI'");
    }
}

TEST(Site, Folders) {
    SiteFixture fixture(Section(1, "AB"));
    fixture.host.folders.insert(L"D:\\Vantor");
    ASSERT_TRUE(fixture.Read());
    EXPECT_EQ(fixture.host.created, (Problems{L"D:\\Vantor\\\\Logs", L"D:\\Vantor\\\\Logs\\MailLogs",
                                              L"C:\\Site\\CustomReportTemplates", L"D:\\Vantor\\SecondaryBackup"}));
    const DahsFolders& folders = fixture.site.Current().folders;
    EXPECT_EQ(folders.vantor, L"D:\\Vantor");
    EXPECT_EQ(folders.primaryBackup, L"E:\\Backup");
    EXPECT_EQ(folders.temp, L"C:\\Windows\\Temp");
    EXPECT_EQ(fixture.site.Current().PadepReportDir(), L"D:\\Vantor\\PADEP Reports");

    fixture.host.folders.insert(L"D:\\Vantor\\Temp");
    EXPECT_TRUE(fixture.site.Choose(1, false, false));
    EXPECT_EQ(folders.temp, L"D:\\Vantor\\Temp");

    SiteFixture refused(Section(1, "AB", "LogsDir=D:\\Logs\\"));
    refused.host.refusedFolder = L"D:\\Logs";
    EXPECT_TRUE(refused.Read());
    EXPECT_EQ(refused.host.created, Problems{L"D:\\Vantor"});
    EXPECT_EQ(refused.site.Problems().back(), L"Could not create folder 'D:\\Logs': Access is denied.");
}

TEST(Site, InfoTexts) {
    SiteFixture fixture(Section(1, "AB", "HDR=no\nRedundantDasRole=primary\nLanguageID=de\nDahsDescription=a\tb"));
    ASSERT_TRUE(fixture.Read());
    const std::vector<std::wstring> texts = fixture.site.InfoTexts(3);
    ASSERT_EQ(texts.size(), 33u + 1 + 3 + 1);  // one more for the tab in the description
    EXPECT_EQ(texts[0], L"ActualVantorINI=C:\\Site\\Vantor5.INI");
    EXPECT_EQ(texts[1], L"DahsEntries.Count=1");
    EXPECT_EQ(texts[4], L"LanguageId=de");
    EXPECT_EQ(texts[6], L"DahsDescription=a");
    EXPECT_EQ(texts[7], L"b");
    EXPECT_EQ(texts[9], L"HDREnabled=False");
    EXPECT_EQ(texts[10], L"AutoOutputEnabled=True");
    EXPECT_EQ(texts[11], L"AutoOutputEnabledEx=-1");
    EXPECT_EQ(texts[13], L"RedundantDasRole=1");
    EXPECT_EQ(texts[33], L"ReportsURL=");
    EXPECT_EQ(texts[34], L"");
    EXPECT_EQ(SiteFixture("").site.InfoTexts(-5).size(), 34u);
}

}  // namespace v5
