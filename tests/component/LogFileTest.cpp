// LogFileClass on real files: sharing, sudden death, files that cannot be had, texts that do not fit the code page.
#include "V5Strings.h"
#include "component/Client.h"
#include "component/Packages.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace v5::test {
namespace {

// Whether `text` has the shape of `pattern`, in which 0 stands for any digit.
bool HasShape(const std::string& text, const std::string& pattern) {
    return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(),
                      [](char c, char p) { return p == '0' ? c >= '0' && c <= '9' : c == p; });
}

// The same for a line that ends with AM or PM somewhere: written as "XM" in the pattern.
bool HasStampShape(std::string text, const std::string& pattern) {
    const size_t at = pattern.find("XM");
    if (at >= text.size() || (text[at] != 'A' && text[at] != 'P')) {
        return false;
    }
    text[at] = 'X';
    return HasShape(text, pattern);
}

std::string FileBytes(const std::wstring& path) {
    // A reader must let the writer go on.
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << GetLastError();
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    EXPECT_TRUE(ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr));
    CloseHandle(file);
    bytes.resize(read);
    return bytes;
}

std::vector<std::string> Lines(const std::string& bytes) {
    EXPECT_TRUE(bytes.empty() || bytes.ends_with("\r\n"));
    std::vector<std::string> lines;
    for (size_t from = 0, at; (at = bytes.find("\r\n", from)) != std::string::npos; from = at + 2) {
        lines.push_back(bytes.substr(from, at - from));
    }
    return lines;
}

std::wstring SystemMessage(DWORD code) {
    wchar_t text[256];
    return {text, FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                 static_cast<DWORD>(std::size(text)), nullptr)};
}

// The client's side of one LogFileClass.
struct Log {
    ComPtr<_LogFileClass> object;

    Log() {
        EXPECT_EQ(CoCreateInstance(CLSID_LogFileClass, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)), S_OK);
    }
    bool Start(const std::wstring& path, const wchar_t* title = L"", bool prefixes = false) {
        VARIANT_BOOL started = VARIANT_FALSE;
        const VARIANT_BOOL show = prefixes ? VARIANT_TRUE : VARIANT_FALSE;
        EXPECT_EQ(object->StartLog(_bstr_t(path.c_str()), _bstr_t(title), show, show, &started), S_OK);
        EXPECT_EQ(started == VARIANT_TRUE, IsActive());
        return started == VARIANT_TRUE;
    }
    bool IsActive() {
        VARIANT_BOOL active = VARIANT_FALSE, same = VARIANT_TRUE;
        EXPECT_EQ(object->get_Active(&active), S_OK);
        EXPECT_EQ(object->get_IsActive(&same), S_OK);
        EXPECT_EQ(active, same);
        return active == VARIANT_TRUE;
    }
    void Write(const std::wstring& text) {
        BSTR bstr = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        EXPECT_EQ(object->WriteToLog(bstr), S_OK);
        SysFreeString(bstr);
    }
    std::wstring Filename() {
        BSTR text = nullptr;
        EXPECT_EQ(object->get_Filename(&text), S_OK);
        return Taken(text);
    }
    std::wstring Error() {
        BSTR text = nullptr;
        EXPECT_EQ(object->get_LogError(&text), S_OK);
        return Taken(text);
    }
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

constexpr char kStart[] = "** START Vantor log file  0000-00-00 00:00:00 XM **";
constexpr char kEnd[] = "** END Vantor log file 0000-00-00 00:00:00 XM **";

TEST_F(LogFileTest, RunHasStartLineHeaderAndEndLine) {
    Log log;
    EXPECT_EQ(log.Filename(), L"");
    ASSERT_TRUE(log.Start(path, L"Title", true));
    log.Write(L"first");
    log.object->StopLog();
    EXPECT_FALSE(log.IsActive());
    EXPECT_EQ(log.Filename(), path);
    std::vector<std::string> lines = Lines(FileBytes(path));
    ASSERT_EQ(lines.size(), 16u);
    EXPECT_PRED2(HasStampShape, lines.front(), kStart);
    EXPECT_PRED2(HasStampShape, lines.back(), kEnd);
    for (size_t i = 1; i < 15; ++i) {
        const std::string prefix = lines[i].substr(0, 37);
        EXPECT_PRED2(HasStampShape, prefix.substr(13), "0000-00-00 00:00:00 XM  ");
        EXPECT_EQ(prefix.substr(0, 13).find_first_not_of("0123456789"), prefix.find(' ')) << "the tick is decimal";
        lines[i].erase(0, 37);
    }
    EXPECT_EQ(lines[1], std::string(lines[1].size(), '*'));
    EXPECT_EQ(lines[12], lines[1]);
    EXPECT_EQ(lines[13], "");
    EXPECT_EQ(lines[14], "first");
    std::vector<std::string> inside;
    for (size_t i = 2; i < 12; ++i) {
        EXPECT_EQ(lines[i].size(), lines[1].size());
        EXPECT_TRUE(lines[i].starts_with("** ") && lines[i].ends_with(" **"));
        inside.push_back(lines[i].substr(3, lines[i].size() - 6));
        inside.back().erase(inside.back().find_last_not_of(' ') + 1);
    }
    char computer[64];
    DWORD size = sizeof computer;
    GetComputerNameA(computer, &size);
    EXPECT_EQ(inside[0], "Title");
    EXPECT_EQ(inside[2], "");
    EXPECT_EQ(inside[3], "Installed Vantor Releases:");
    EXPECT_EQ(inside[7], "Log Filename: " + std::string(path.begin(), path.end()));
    EXPECT_EQ(inside[8], "Machine Name: " + std::string(computer));
    EXPECT_TRUE(inside[9].starts_with("O/S: Microsoft Windows ") && inside[9].ends_with("), 64-bit")) << inside[9];
    SYSTEMTIME now;
    GetLocalTime(&now);
    char date[128];
    GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &now, nullptr, date, sizeof date);
    EXPECT_TRUE(inside[1].starts_with(std::string(date) + " ")) << inside[1];
}

// The lines of the header's box that name releases, without the box.
std::vector<std::string> ReleaseLines(const std::wstring& path) {
    const std::vector<std::string> lines = Lines(FileBytes(path));
    std::vector<std::string> releases;
    for (size_t i = 6; i < 9; ++i) {
        releases.push_back(lines.at(i).substr(3));
        releases.back().erase(releases.back().find_last_not_of(" *") + 1);
    }
    return releases;
}

TEST_F(LogFileTest, HeaderNamesTheInstalledReleases) {
    if (!HavePackages() || !HaveInstaller()) {
        GTEST_SKIP() << "there is no installer, or no package to install";
    }
    const InstalledPackage main(L"main");
    const InstalledPackage web(L"web");
    Log log;
    ASSERT_TRUE(log.Start(path, L"Title"));
    log.object->StopLog();
    EXPECT_EQ(ReleaseLines(path), (std::vector<std::string>{"    Release 5.3.12", "", "    VantorWeb ??"}));
}

TEST_F(LogFileTest, NameWithoutFolderStandsBesideTheLibrary) {
    Log log;
    ASSERT_TRUE(log.Start(L"v5log-component-test.log"));
    wchar_t library[MAX_PATH];
    GetModuleFileNameW(GetModuleHandleW(L"V5Strings.dll"), library, MAX_PATH);
    const std::wstring expected =
        std::wstring(library).substr(0, std::wstring(library).rfind(L'\\')) + L"\\v5log-component-test.log";
    EXPECT_EQ(log.Filename(), expected);
    log.object->StopLog();
    EXPECT_EQ(Lines(FileBytes(expected)).size(), 2u);
    DeleteFileW(expected.c_str());
}

TEST_F(LogFileTest, ReleaseAndRestartEndTheRun) {
    {
        Log log;
        ASSERT_TRUE(log.Start(path));
        ASSERT_TRUE(log.Start(path)) << "the same file, by the same instance";
    }
    const std::vector<std::string> lines = Lines(FileBytes(path));
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_PRED2(HasStampShape, lines[1], kEnd);
    EXPECT_PRED2(HasStampShape, lines[2], kStart);
    EXPECT_EQ(lines[3], "**Log file closing because LogFile instance is terminating**");
    EXPECT_PRED2(HasStampShape, lines[4], kEnd);
}

TEST_F(LogFileTest, InactiveLogIgnoresEverything) {
    Log log;
    log.Write(L"nowhere");
    EXPECT_EQ(log.object->WriteToLog2(nullptr, VARIANT_TRUE), S_OK);
    EXPECT_EQ(log.object->Flush(), S_OK);
    EXPECT_EQ(log.object->StopLog(), S_OK);
    EXPECT_EQ(log.Error(), L"");
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
    log.object->StopLog();
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
        EXPECT_EQ(log.object->StopLog(), S_OK);
        EXPECT_FALSE(log.IsActive());
    }
}

// ---- A second process: this program again, running one of the two tests at the end ----

constexpr wchar_t kPathVariable[] = L"V5LOG_TEST_PATH";

struct Progress {
    volatile LONG linesReturned;
    volatile LONG startFailed;
    wchar_t error[256];
};

// Memory that the two processes share.
struct SharedProgress {
    HANDLE mapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Progress), L"v5log-test-progress");
    Progress* progress = static_cast<Progress*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof(Progress)));
    ~SharedProgress() {
        UnmapViewOfFile(progress);
        CloseHandle(mapping);
    }
};

struct SecondProcess {
    PROCESS_INFORMATION info{};

    SecondProcess(const std::wstring& path, const wchar_t* role) {
        SetEnvironmentVariableW(kPathVariable, path.c_str());
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        std::wstring command = L"\"" + std::wstring(program) + L"\" --gtest_also_run_disabled_tests --gtest_brief=1" +
                               L" --gtest_filter=LogFileSecondProcess.DISABLED_" + role;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        EXPECT_TRUE(
            CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info));
    }
    ~SecondProcess() {
        CloseHandle(info.hThread);
        CloseHandle(info.hProcess);
    }
    bool WaitForEnd() { return WaitForSingleObject(info.hProcess, 30'000) == WAIT_OBJECT_0; }
};

TEST_F(LogFileTest, SecondWriterIsRefusedAndAReaderFollows) {
    Log log;
    ASSERT_TRUE(log.Start(path));
    log.Write(L"one");
    const std::string first = FileBytes(path);
    EXPECT_TRUE(first.ends_with("one\r\n"));

    Log second;
    EXPECT_FALSE(second.Start(path, L"Title"));
    EXPECT_EQ(second.Error(), SystemMessage(ERROR_SHARING_VIOLATION));

    SharedProgress shared;
    SecondProcess other(path, L"Start");
    ASSERT_TRUE(other.WaitForEnd());
    EXPECT_EQ(shared.progress->startFailed, 1);
    EXPECT_EQ(shared.progress->error, SystemMessage(ERROR_SHARING_VIOLATION));

    log.Write(L"two");
    EXPECT_EQ(FileBytes(path), first + "two\r\n");
    log.object->StopLog();
    EXPECT_TRUE(second.Start(path)) << "the file is free again";
}

TEST_F(LogFileTest, KilledProcessLeavesEveryReturnedLine) {
    SharedProgress shared;
    SecondProcess writer(path, L"WriteManyLines");
    while (shared.progress->linesReturned < 20'000 && WaitForSingleObject(writer.info.hProcess, 1) == WAIT_TIMEOUT) {
    }
    TerminateProcess(writer.info.hProcess, 9);
    ASSERT_TRUE(writer.WaitForEnd());
    const LONG returned = shared.progress->linesReturned;
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
    log.object->StopLog();
    EXPECT_EQ(Lines(FileBytes(path)).size(), lines.size() + 2) << "the next run appends";
}

// Roles of the second process.
std::wstring PathFromParent() {
    wchar_t path[MAX_PATH] = {};
    GetEnvironmentVariableW(kPathVariable, path, MAX_PATH);
    return path;
}

TEST(LogFileSecondProcess, DISABLED_Start) {
    SharedProgress shared;
    Log log;
    shared.progress->startFailed = log.Start(PathFromParent()) ? 0 : 1;
    wcsncpy(shared.progress->error, log.Error().c_str(), std::size(shared.progress->error) - 1);
}

TEST(LogFileSecondProcess, DISABLED_WriteManyLines) {
    SharedProgress shared;
    Log log;
    ASSERT_TRUE(log.Start(PathFromParent(), L"", true));
    for (LONG i = 1; i <= 100'000; ++i) {
        log.Write(L"line " + std::to_wstring(i));
        shared.progress->linesReturned = i;
    }
}

}  // namespace
}  // namespace v5::test
