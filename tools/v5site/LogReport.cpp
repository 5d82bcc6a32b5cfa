#include "LogReport.h"

#include <windows.h>

#include <memory>

#include "Console.h"
#include "LogMerge.h"
#include "base/Utf8.h"
#include "platform/AnsiCodePage.h"
#include "platform/SystemText.h"

namespace v5site {

namespace {

// A log file, which its program may still be writing.
class LogFile final : public LogSource {
  public:
    explicit LogFile(const std::wstring& path)
        : mFile(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {
        if (mFile == INVALID_HANDLE_VALUE) {
            throw Error(L"cannot read " + path + L": " + v5::SystemText(HRESULT_FROM_WIN32(GetLastError())));
        }
    }
    ~LogFile() override { CloseHandle(mFile); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    size_t Read(char* buffer, size_t size) override {
        DWORD got = 0;
        return ReadFile(mFile, buffer, static_cast<DWORD>(size), &got, nullptr) ? got : 0;
    }

  private:
    HANDLE mFile;
};

// On a console, how far the output is, once a second.
class Progress {
  public:
    void Add(size_t bytes) {
        mBytes += bytes;
        const ULONGLONG now = GetTickCount64();
        if (mIsShown && now - mLast >= 1000) {
            mLast = now;
            mHasPrinted = true;
            PrintError(L"\r" + std::to_wstring(mBytes >> 20) + L" MB");
        }
    }
    void End() const {
        if (mHasPrinted) {
            PrintError(L"\r");
        }
    }

  private:
    const bool mIsShown = IsConsole(STD_ERROR_HANDLE) && !IsConsole(STD_OUTPUT_HANDLE);  // else the lines show it
    ULONGLONG mLast = GetTickCount64();
    std::uint64_t mBytes = 0;
    bool mHasPrinted = false;
};

std::int64_t TimeOr(const std::wstring& text, std::int64_t none) {
    return text.empty() ? none : LogTime(std::string(text.begin(), text.end()));
}

}  // namespace

ExitStatus PrintLogs(const CommandLine& line) {
    std::vector<LogInput> inputs;
    inputs.reserve(line.logs.size());
    for (const std::wstring& path : line.logs) {
        inputs.push_back({v5::ToUtf8(path.substr(path.find_last_of(L"\\/") + 1)), std::make_unique<LogFile>(path)});
    }
    const LogOptions options = {.from = TimeOr(line.from, INT64_MIN),
                                .to = TimeOr(line.to, INT64_MAX),
                                .grep = v5::ToUtf8(line.grep),
                                .json = line.json};
    Progress progress;
    const LogSummary summary = MergeLogs(
        std::move(inputs), options, [](std::string_view text) { return v5::ToUtf8(v5::FromAnsi(text)); },
        [&](std::string_view text) {
            progress.Add(text.size());
            return PrintUtf8(text);
        });
    progress.End();
    if (!summary.isWritten) {
        throw Error(L"the output cannot be written");
    }
    PrintError(
        std::to_wstring(summary.shown) + L" of " + std::to_wstring(summary.lines) + L" lines" +
        (summary.missingEnds == 0 ? L"" : L"; runs without an END line: " + std::to_wstring(summary.missingEnds)) +
        L"\n");
    return Fine;
}

}  // namespace v5site
