// v5site as a user runs it: a process whose output and exit status count.
#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "component/Client.h"
#include "component/SiteFolder.h"

namespace v5::test {

namespace {

struct Outcome {
    int status;
    std::string output, errors;
};

// What a file holds; the file is gone afterwards.
std::string Taken(const std::filesystem::path& path) {
    std::string text;
    {
        std::ifstream file(path, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    std::filesystem::remove(path);
    return text;
}

// Runs the tool, which lies in the folder above this program's, as a command line does.
Outcome Tool(const std::wstring& arguments) {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto tool = std::filesystem::path(program).parent_path().parent_path() / "v5site.exe";
    const auto folder = std::filesystem::temp_directory_path();
    const auto output = folder / "v5site.out", errors = folder / "v5site.err";
    const std::wstring command = L"\"\"" + tool.wstring() + L"\" " + arguments + L" >\"" + output.wstring() +
                                 L"\" 2>\"" + errors.wstring() + L"\"\"";
    const int status = _wsystem(command.c_str());
    return {status, Taken(output), Taken(errors)};
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

constexpr char kSound[] =
    "\xEF\xBB\xBF[Dahs1]\nSiteID=ab\nDahsComputerName=far\nDahsDescription=St\xC3\xB6r \"1\"\nBackupDir=b\n"
    "VantorDir=$folder$\\V\n"
    "SQLAlarms=Server=s;Password=secret\nSQLConfig=c\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\n";

}  // namespace

TEST(V5Site, CheckTellsProblemsByItsStatus) {
    SiteFolder folder(kSound);
    Outcome outcome = Tool(L"check");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "Usable:\n  DAHS 1 (site AB, far)\nNo problems.")) << outcome.output;

    folder.Write(std::string(kSound) + "[Dahs2]\nSiteID=12\n");
    outcome = Tool(L"check --json");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(Contains(outcome.output, "\"status\": 1,\n")) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "DAHS 2: missing or invalid value for 'SiteID'; may not be a number\""))
        << outcome.output;

    folder.Write("[Dahs2]\nSiteID=12\n");
    outcome = Tool(L"check");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(Contains(outcome.output, "No DAHS is usable.")) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "'SiteID'; may not be a number (line 2)\n")) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "'VantorDir' (line 1)\n")) << "the header stands in for a missing key";
    outcome = Tool(L"list");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(Contains(outcome.errors, "v5site: STR-031: no DAHS entries found in '")) << outcome.errors;
}

TEST(V5Site, ListAndShowAreUnicodeAndHidePasswords) {
    const SiteFolder folder(kSound);
    EXPECT_EQ(Tool(L"list").output,
              "ID  SITE  ROLE        COMPUTER  WHERE   DESCRIPTION\n"
              "1   AB    Standalone  far       remote  St\xC3\xB6r \"1\"\n");
    EXPECT_TRUE(Contains(Tool(L"list --json").output, "\"description\": \"St\xC3\xB6r \\\"1\\\"\""));
    const Outcome hidden = Tool(L"show --site AB --dotnet");
    EXPECT_TRUE(Contains(hidden.output, "Server=s;Password=***\n")) << hidden.output;
    EXPECT_FALSE(Contains(hidden.output, "secret"));
    EXPECT_FALSE(Contains(Tool(L"show --json").output, "secret"));
    EXPECT_TRUE(Contains(Tool(L"show --dahs 1 --show-passwords").output, "Password=secret"));
    EXPECT_EQ(Tool(L"show --dahs 2").status, 2);
}

TEST(V5Site, LookingLeavesNoTrace) {
    const SiteFolder folder(kSound);
    const std::wstring file = L"\"" + folder.Path() + L"\\Vantor5.INI\"";
    const Outcome why = Tool(L"why --file " + file);
    EXPECT_EQ(why.status, 0) << why.errors;
    EXPECT_TRUE(Contains(why.output, "  1  chosen\n       remote: its computer 'far' is not this one\n")) << why.output;
    EXPECT_TRUE(Contains(Tool(L"why").output, "  found      ")) << "where it was found";
    EXPECT_EQ(Tool(L"diff " + file + L" " + file).output, "No differences.\n");
    EXPECT_EQ(Tool(L"diff " + file + L" none.INI").status, 2);
    for (const wchar_t* arguments : {L"check --strict", L"list", L"show", L"show --json"}) {
        EXPECT_EQ(Tool(arguments).status, 0);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.Path() + L"\\V")) << "the DAHS's folder was made";
    EXPECT_EQ(Tool(L"log " + file + L" --grep hdr").output, "");
    EXPECT_TRUE(Contains(Tool(L"log " + file).output, "Vantor5.INI  SiteID=ab\n"));
}

TEST(V5Site, SecurityAnswersAnAuditor) {
    const std::string rest = ";Integrated Security=SSPI\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\n";
    const std::string head = "DahsComputerName=far\nBackupDir=b\nVantorDir=$folder$\\V\nSQLAlarms=Data Source=$folder$";
    const SiteFolder folder("[Dahs1]\nSiteID=AB\n" + head +
                            "\\site.db;Integrated Security=SSPI\nSQLConfig=Data Source=$folder$\\site.db" + rest +
                            "[Dahs2]\nSiteID=CD\n" + head +
                            "\\none\\x.db;Integrated Security=SSPI\nSQLConfig=Data Source=$folder$\\none\\x.db" + rest);
    const std::wstring file = folder.Path() + L"\\site.db";
    const auto security = CreateByName(L"V5Strings.NimboSecurity");
    const std::wstring login = L"Data Source=" + file + L";Integrated Security=SSPI";
    ASSERT_TRUE(static_cast<bool>(
        Call(security.Get(), L"Setup", {L"AB", L"EN", login.c_str(), login.c_str(), L"Test", true}).value));
    Call(security.Get(), L"EnableSecurity");
    Call(security.Get(), L"SetMinPrivilegeLevelForRID", {301L, 52L});
    Call(security.Get(), L"SetMinPrivilegeLevelForPID", {9001L, 51L});
    Call(security.Get(), L"SetSidsForAllPrivilegeLevels", {L"", L"a\"b", L"", false});
    Call(security.Get(), L"Teardown");

    const Outcome plain = Tool(L"security");
    EXPECT_EQ(plain.status, 0) << plain.errors;
    for (const char* part : {"Site        AB\n", "Security    2  Enabled_Configured\n", "Level 1     (nobody)\n",
                             "Level 2     a\"b\n", "  STR-0105  Vantor security enabled by '",
                             "  STR-0139  RID 301: min privilege level changed from '' to '52' by '", "  9001  "}) {
        EXPECT_TRUE(Contains(plain.output, part)) << plain.output;
    }
    const Outcome may = Tool(L"security --since 2999-01-01 --user nobody --may 301");
    EXPECT_TRUE(Contains(may.output, "No such changes in the whole event log\n")) << may.output;
    EXPECT_TRUE(Contains(may.output, "  no   level 1 list\n  yes  level 2 list: a\"b\n")) << may.output;
    const Outcome json = Tool(L"security --site AB --json");
    EXPECT_TRUE(Contains(json.output, "\"level2\": \"a\\\"b\"")) << json.output;
    EXPECT_TRUE(Contains(json.output,
                         "\"name\": \"RID_DBE_EditNewOccurs\",\n      \"level\": 52,\n      "
                         "\"levelName\": \"PrivLevel_2\""))
        << json.output;
    const Outcome closed = Tool(L"security --dahs 2");
    EXPECT_EQ(closed.status, 2);
    EXPECT_EQ(closed.output, "");
    EXPECT_TRUE(Contains(closed.errors, "v5site: Can't setup DBIL [STR-0097]\n")) << closed.errors;
    DeleteFileW(file.c_str());
}

TEST(V5Site, WrongCommandLinesAreExplained) {
    for (const wchar_t* arguments :
         {L"", L"frobnicate", L"check --dahs 1", L"show --dahs", L"show --dahs 1x", L"show --dahs 1 --site A",
          L"list --dotnet", L"diff a", L"log", L"security --since 2014", L"show --site --dotnet"}) {
        const Outcome outcome = Tool(arguments);
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(Contains(outcome.errors, "Try 'v5site --help'.")) << outcome.errors;
    }
    const Outcome help = Tool(L"show --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(Contains(help.output, "EXIT STATUS"));
}

}  // namespace v5::test
