// LogFileClass on real files: sharing, sudden death, files that cannot be had, texts that do not fit the code page.
#include "V5Strings.h"
#include "component/Client.h"
#include "component/Packages.h"

#include <process.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace v5::test {
namespace {

// What the file holds now; the writer goes on meanwhile.
std::string FileBytes(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    EXPECT_TRUE(file.is_open());
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> Lines(const std::string& bytes) {
    EXPECT_TRUE(bytes.empty() || bytes.ends_with("\r\n"));
    std::vector<std::string> lines;
    for (size_t from = 0, at; (at = bytes.find("\r\n", from)) != std::string::npos; from = at + 2) {
        lines.push_back(bytes.substr(from, at - from));
    }
    return lines;
}

// Expects that the file's lines match these patterns.
void ExpectLines(const std::wstring& path, const std::vector<std::string>& patterns) {
    const std::vector<std::string> lines = Lines(FileBytes(path));
    ASSERT_EQ(lines.size(), patterns.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_TRUE(std::regex_match(lines[i], std::regex(patterns[i]))) << lines[i] << " instead of " << patterns[i];
    }
}

// The pattern that a text itself matches.
std::string Literally(const std::string& text) {
    return std::regex_replace(text, std::regex(R"([.^$|()[\]{}*+?\\])"), R"(\$&)");
}

std::wstring SystemMessage(DWORD code) {
    wchar_t text[256];
    return {text, FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                 static_cast<DWORD>(std::size(text)), nullptr)};
}

// The client's side of one LogFileClass.
struct Log {
    ComPtr<_LogFileClass> object;

    Log() { EXPECT_EQ(CreateByName(L"V5Strings.LogFileClass").As(&object), S_OK); }
    bool Start(const std::wstring& path, const wchar_t* title = L"", bool prefixes = false) {
        VARIANT_BOOL started = VARIANT_FALSE;
        const VARIANT_BOOL show = prefixes ? VARIANT_TRUE : VARIANT_FALSE;
        EXPECT_EQ(object->StartLog(_bstr_t(path.c_str()), _bstr_t(title), show, show, &started), S_OK);
        EXPECT_EQ(started == VARIANT_TRUE, IsActive());
        return started == VARIANT_TRUE;
    }
    bool IsActive() {
        const _variant_t active = Get(object.Get(), L"Active");
        EXPECT_EQ(active, Get(object.Get(), L"IsActive"));
        return static_cast<bool>(active);
    }
    void Write(const std::wstring& text) {
        const _bstr_t bstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false);
        EXPECT_EQ(object->WriteToLog(bstr), S_OK);
    }
    void Stop() { EXPECT_EQ(object->StopLog(), S_OK); }
    std::wstring Filename() { return Text(Get(object.Get(), L"Filename")); }
    std::wstring Error() { return Text(Get(object.Get(), L"LogError")); }
};

// A folder of its own for each test, removed with its files.
struct LogFileTest : testing::Test {
    std::wstring folder, path;

    void SetUp() override {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        folder = std::wstring(temp) + L"v5log-" + std::to_wstring(GetCurrentProcessId());
        path = folder + L"\\app.log";
        CreateDirectoryW(folder.c_str(), nullptr);
    }
    void TearDown() override {
        DeleteFileW(path.c_str());
        EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
    }
};

constexpr char kStart[] = R"(\*\* START Vantor log file  \d{4}-\d\d-\d\d \d\d:\d\d:\d\d [AP]M \*\*)";
constexpr char kEnd[] = R"(\*\* END Vantor log file \d{4}-\d\d-\d\d \d\d:\d\d:\d\d [AP]M \*\*)";

// A run with a header and one line; the header has three lines for releases.
void ExpectRun(const std::wstring& path, const std::string& prefix, const std::vector<std::string>& releases) {
    char computer[64], date[128];
    DWORD size = sizeof computer;
    GetComputerNameA(computer, &size);
    SYSTEMTIME now;
    GetLocalTime(&now);
    GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &now, nullptr, date, sizeof date);
    const auto box = [&](const std::string& inside) { return prefix + R"(\*\* )" + inside + R"( +\*\*)"; };
    ExpectLines(path, {kStart, prefix + R"(\*+)", box("Title"), box(Literally(date) + " .*"), box(""),
                       box("Installed Vantor Releases:"), box(releases[0]), box(releases[1]), box(releases[2]),
                       box("Log Filename: " + Literally(std::string(path.begin(), path.end()))),
                       box("Machine Name: " + Literally(computer)), box(R"(O/S: Microsoft Windows .*\), (32|64)-bit)"),
                       prefix + R"(\*+)", prefix, prefix + "first", kEnd});
}

TEST_F(LogFileTest, RunHasStartLineHeaderAndEndLine) {
    const InstalledPackage main(L"main");
    const InstalledPackage web(L"web");
    for (const bool prefixes : {false, true}) {
        Log log;
        EXPECT_EQ(log.Filename(), L"");
        ASSERT_TRUE(log.Start(path, L"Title", prefixes));
        log.Write(L"first");
        log.Stop();
        EXPECT_FALSE(log.IsActive());
        EXPECT_EQ(log.Filename(), path);
        ExpectRun(path, prefixes ? R"([\d ]{13}\d{4}-\d\d-\d\d \d\d:\d\d:\d\d [AP]M  )" : "",
                  {R"(    Release 5\.3\.12)", "", R"(    VantorWeb \?\?)"});
        DeleteFileW(path.c_str());
    }
}

TEST_F(LogFileTest, NameWithoutFolderStandsBesideTheLibrary) {
    Log log;
    wchar_t library[MAX_PATH];
    GetModuleFileNameW(GetModuleHandleW(L"V5Strings.dll"), library, MAX_PATH);
    const std::wstring expected =
        std::wstring(library).substr(0, std::wstring(library).rfind(L'\\')) + L"\\v5log-component-test.log";
    DeleteFileW(expected.c_str());  // of a run that was interrupted
    ASSERT_TRUE(log.Start(L"v5log-component-test.log"));
    EXPECT_EQ(log.Filename(), expected);
    log.Stop();
    EXPECT_EQ(Lines(FileBytes(expected)).size(), 2u);
    DeleteFileW(expected.c_str());
}

TEST_F(LogFileTest, ReleaseAndRestartEndTheRun) {
    {
        Log log;
        ASSERT_TRUE(log.Start(path));
        ASSERT_TRUE(log.Start(path)) << "the same file, by the same instance";
    }
    ExpectLines(path,
                {kStart, kEnd, kStart, R"(\*\*Log file closing because LogFile instance is terminating\*\*)", kEnd});
}

TEST_F(LogFileTest, LinesAreOneByteACharacter) {
    const std::wstring texts[] = {
        L"",
        L"a\r\nb\nc",
        L"\u00B5g/m\u00B3 \u20AC \u65E5\u672C",
        L"\U0001F600|",
        std::wstring(L"a\0b", 3),
        std::wstring(1 << 20, L'x') + L"\u00E9\u65E5",
    };
    Log log;
    ASSERT_TRUE(log.Start(path));
    for (const std::wstring& text : texts) {
        const size_t before = FileBytes(path).size();
        log.Write(text);
        const std::string line = FileBytes(path).substr(before);
        std::string expected(text.size(), '\0');
        WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), expected.data(),
                            static_cast<int>(expected.size()), nullptr, nullptr);
        EXPECT_TRUE(line == expected + "\r\n") << line.substr(0, 80);
    }
    log.Stop();
}

// What the system itself says to the same open, for names that a client may get wrong.
TEST_F(LogFileTest, FilesThatCannotBeOpened) {
    const std::wstring readOnly = folder + L"\\read-only.log";
    CloseHandle(CreateFileW(readOnly.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_READONLY, nullptr));
    const struct {
        std::wstring path;
        std::string ansi;  // the name as the code page has it
    } rows[] = {
        {folder + L"\\missing\\app.log", "\\missing\\app.log"},
        {readOnly, "\\read-only.log"},
        {folder + L"\\" + std::wstring(300, L'n') + L".log", "\\" + std::string(300, 'n') + ".log"},
        {folder + L"\\", "\\"},
        {folder + L"\\a?b.log", "\\a?b.log"},
        {folder + L"\\\u65E5\u672C.log", "\\??.log"},
    };
    for (const auto& row : rows) {
        const std::string name = std::string(folder.begin(), folder.end()) + row.ansi;
        const HANDLE file = CreateFileA(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
        const DWORD code = file == INVALID_HANDLE_VALUE ? GetLastError() : 0;
        CloseHandle(file);
        if (code == 0 && row.path == readOnly) {
            continue;  // an emulated system whose user may do everything
        }
        ASSERT_NE(code, 0u) << row.ansi;
        Log log;
        EXPECT_FALSE(log.Start(row.path, L"Title"));
        EXPECT_EQ(log.Error(), SystemMessage(code)) << row.ansi;
        EXPECT_TRUE(log.Error().ends_with(L"\r\n"));
        EXPECT_EQ(log.Filename(), row.path);
        log.Write(L"ignored");
    }
    SetFileAttributesW(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(FileBytes(readOnly), "");
    DeleteFileW(readOnly.c_str());
}

TEST_F(LogFileTest, DevicesAndAFullDiskDisturbNobody) {
    for (const wchar_t* device : {L"\\\\.\\NUL", L"NUL", L"Z:\\dev\\full"}) {
        Log log;
        EXPECT_TRUE(log.Start(device, L"Title", true)) << device;
        log.Write(L"lost");
        EXPECT_EQ(log.object->WriteToLog2(_bstr_t(L"lost"), VARIANT_TRUE), S_OK);
        EXPECT_TRUE(log.IsActive()) << "what a write gives is not looked at";
        EXPECT_EQ(log.Error(), L"");
        log.Stop();
        EXPECT_FALSE(log.IsActive());
    }
}

TEST_F(LogFileTest, SecondWriterIsRefusedAndAReaderFollows) {
    Log log;
    ASSERT_TRUE(log.Start(path));
    log.Write(L"one");
    const std::string first = FileBytes(path);
    EXPECT_TRUE(first.ends_with("one\r\n"));

    Log second;
    EXPECT_FALSE(second.Start(path, L"Title"));
    EXPECT_EQ(second.Error(), SystemMessage(ERROR_SHARING_VIOLATION));

    log.Write(L"two");
    EXPECT_EQ(FileBytes(path), first + "two\r\n");
    log.Stop();
    EXPECT_TRUE(second.Start(path)) << "the file is free again";
}

// ---- A second process: this program again, running the test at the end ----

constexpr wchar_t kPathVariable[] = L"V5LOG_TEST_PATH";

// How many lines have been written, in memory that the two processes share.
struct SharedCount {
    HANDLE mapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(LONG), L"v5log-test-progress");
    volatile LONG* lines = static_cast<volatile LONG*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof(LONG)));
    ~SharedCount() {
        UnmapViewOfFile(const_cast<LONG*>(lines));
        CloseHandle(mapping);
    }
};

TEST_F(LogFileTest, KilledProcessLeavesEveryReturnedLine) {
    const SharedCount shared;
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    SetEnvironmentVariableW(kPathVariable, path.c_str());
    const auto writer = reinterpret_cast<HANDLE>(
        _wspawnl(_P_NOWAIT, program, L"v5component", L"--gtest_also_run_disabled_tests", L"--gtest_brief=1",
                 L"--gtest_filter=LogFileSecondProcess.DISABLED_WriteManyLines", nullptr));
    while (*shared.lines < 20'000 && WaitForSingleObject(writer, 1) == WAIT_TIMEOUT) {
    }
    TerminateProcess(writer, 9);
    ASSERT_EQ(WaitForSingleObject(writer, 30'000), WAIT_OBJECT_0);
    CloseHandle(writer);
    const LONG returned = *shared.lines;
    ASSERT_GE(returned, 20'000);
    ASSERT_LT(returned, 100'000) << "killed too late";

    const std::vector<std::string> lines = Lines(FileBytes(path));  // whole lines only
    const auto written = static_cast<LONG>(lines.size()) - 1;
    EXPECT_TRUE(written == returned || written == returned + 1) << written << " written, " << returned << " returned";
    for (LONG i = 1; i <= written; ++i) {
        ASSERT_EQ(lines[static_cast<size_t>(i)].substr(37), "line " + std::to_string(i));
    }

    Log log;
    ASSERT_TRUE(log.Start(path));
    log.Stop();
    EXPECT_EQ(Lines(FileBytes(path)).size(), lines.size() + 2) << "the next run appends";
}

TEST(LogFileSecondProcess, DISABLED_WriteManyLines) {
    const SharedCount shared;
    wchar_t path[MAX_PATH] = {};
    GetEnvironmentVariableW(kPathVariable, path, MAX_PATH);
    Log log;
    ASSERT_TRUE(log.Start(path, L"", true));
    for (LONG i = 1; i <= 100'000; ++i) {
        log.Write(L"line " + std::to_wstring(i));
        *shared.lines = i;
    }
}

}  // namespace
}  // namespace v5::test
