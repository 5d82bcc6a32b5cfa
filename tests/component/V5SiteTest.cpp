// v5site as a user runs it: a process whose output and exit status count.
#include <array>
#include <string>

#include "component/Client.h"
#include "component/SiteFolder.h"

namespace v5::test {

namespace {

struct Outcome {
    DWORD status = 0;
    std::string output, errors;
};

// Collects what a process writes into the other end of a pipe.
class Pipe {
  public:
    Pipe() {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        EXPECT_TRUE(CreatePipe(&read_, &write_, &inherited, 1 << 20));  // holds all that a test makes it print
        SetHandleInformation(read_, HANDLE_FLAG_INHERIT, 0);
    }
    ~Pipe() { CloseHandle(read_); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    HANDLE WriteEnd() const { return write_; }
    std::string ReadAll() {
        CloseHandle(write_);
        std::string text;
        std::array<char, 4096> buffer;
        DWORD got = 0;
        while (ReadFile(read_, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr) && got > 0) {
            text.append(buffer.data(), got);
        }
        return text;
    }

  private:
    HANDLE read_ = nullptr;
    HANDLE write_ = nullptr;
};

// The tool lies in the folder above this program's.
std::wstring ToolPath() {
    std::array<wchar_t, MAX_PATH> path{};
    GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
    const std::wstring program = path.data();
    const std::wstring folder = program.substr(0, program.rfind(L'\\'));
    return folder.substr(0, folder.rfind(L'\\')) + L"\\v5site.exe";
}

Outcome Tool(const std::wstring& arguments) {
    Pipe output;
    Pipe errors;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.WriteEnd();
    startup.hStdError = errors.WriteEnd();
    PROCESS_INFORMATION process = {};
    std::wstring command = L"\"" + ToolPath() + L"\" " + arguments;
    EXPECT_TRUE(
        CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
    Outcome outcome;
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 60'000), WAIT_OBJECT_0);
    GetExitCodeProcess(process.hProcess, &outcome.status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    outcome.output = output.ReadAll();
    outcome.errors = errors.ReadAll();
    return outcome;
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
    EXPECT_EQ(outcome.status, 0u) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "Usable:\n  DAHS 1 (site AB, far)\nNo problems.")) << outcome.output;

    folder.Write(std::string(kSound) + "[Dahs2]\nSiteID=12\n");
    outcome = Tool(L"check --json");
    EXPECT_EQ(outcome.status, 1u);
    EXPECT_TRUE(Contains(outcome.output, "\"status\": 1,\n")) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "DAHS 2: missing or invalid value for 'SiteID'; may not be a number\""))
        << outcome.output;

    folder.Write("[Dahs2]\nSiteID=12\n");
    outcome = Tool(L"check");
    EXPECT_EQ(outcome.status, 2u);
    EXPECT_TRUE(Contains(outcome.output, "No DAHS is usable.")) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "'SiteID'; may not be a number (line 2)\n")) << outcome.output;
    EXPECT_TRUE(Contains(outcome.output, "'VantorDir' (line 1)\n")) << "the header stands in for a missing key";
    outcome = Tool(L"list");
    EXPECT_EQ(outcome.status, 2u);
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
    EXPECT_EQ(Tool(L"show --dahs 2").status, 2u);
}

TEST(V5Site, SecurityAnswersAnAuditor) {
    CLSID database;
    if (FAILED(CLSIDFromProgID(L"V5DBIL.DatabaseInterface", &database))) {
        GTEST_SKIP() << "the devkit's database is not built";
    }
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
    Call(security.Get(), L"SetSidsForAllPrivilegeLevels", {L"", L"a\"b", L"", false});
    Call(security.Get(), L"Teardown");

    const Outcome plain = Tool(L"security");
    EXPECT_EQ(plain.status, 0u) << plain.errors;
    for (const char* part : {"Site        AB\n", "Security    2  Enabled_Configured\n", "Level 1     (nobody)\n",
                             "Level 2     a\"b\n", "  STR-0105  Vantor security enabled by '",
                             "  STR-0139  RID 301: min privilege level changed from '' to '52' by '"}) {
        EXPECT_TRUE(Contains(plain.output, part)) << plain.output;
    }
    const Outcome json = Tool(L"security --site AB --json");
    EXPECT_TRUE(Contains(json.output, "\"level2\": \"a\\\"b\"")) << json.output;
    EXPECT_TRUE(Contains(json.output,
                         "\"name\": \"RID_DBE_EditNewOccurs\",\n      \"level\": 52,\n      "
                         "\"levelName\": \"PrivLevel_2\""))
        << json.output;
    const Outcome closed = Tool(L"security --dahs 2");
    EXPECT_EQ(closed.status, 2u);
    EXPECT_EQ(closed.output, "");
    EXPECT_TRUE(Contains(closed.errors, "v5site: Can't setup DBIL [STR-0097]\n")) << closed.errors;
    DeleteFileW(file.c_str());
}

TEST(V5Site, WrongCommandLinesAreExplained) {
    for (const wchar_t* arguments : {L"", L"frobnicate", L"check --dahs 1", L"show --dahs", L"show --dahs 1x",
                                     L"show --dahs 1 --site A", L"list --dotnet"}) {
        const Outcome outcome = Tool(arguments);
        EXPECT_EQ(outcome.status, 3u);
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(Contains(outcome.errors, "Try 'v5site --help'.")) << outcome.errors;
    }
    const Outcome help = Tool(L"show --help");
    EXPECT_EQ(help.status, 0u);
    EXPECT_TRUE(Contains(help.output, "Exit status:"));
}

}  // namespace v5::test
