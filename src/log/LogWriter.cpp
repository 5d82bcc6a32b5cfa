#include "log/LogWriter.h"

#include <new>

#include "base/AutomationError.h"
#include "log/LogHeader.h"

namespace v5 {

namespace {

std::wstring CompletePath(std::wstring_view filename, const LogHost& host) {
    const bool hasFolder = filename.find(L'\\') != std::wstring_view::npos;
    return hasFolder ? std::wstring(filename) : host.LibraryFolder() + L"\\" + std::wstring(filename);
}

std::wstring OpenErrorText(std::uint32_t code, const LogHost& host) {
    const std::wstring text = host.SystemErrorText(code);
    return text.empty() ? L"Error not found (code " + std::to_wstring(code) + L")." : text;
}

}  // namespace

LogWriter::~LogWriter() {
    Write(L"**Log file closing because LogFile instance is terminating**");
    Stop();
}

bool LogWriter::Start(std::wstring_view filename, std::wstring_view title, const LogOptions& options) {
    Stop();
    mFilename = CompletePath(filename, mHost);
    mError.clear();
    mOptions = options;
    mGap.Expect(options.maxTimeGapSeconds);
    if (const std::uint32_t code = mFile.Open(mFilename); code != 0) {
        mError = OpenErrorText(code, mHost);
        return false;
    }
    mFile.SeekToEnd();
    WriteFrameLine(L"** START Vantor log file  ");  // two blanks here, one at the end of the run: published so
    if (!title.empty()) {
        for (const std::wstring& line : LogHeader(mHost, title, mClock.LocalNow(), mFilename)) {
            Write(line);
        }
        Write(L"");
    }
    return true;
}

void LogWriter::Stop() noexcept {
    if (!IsActive()) {
        return;
    }
    try {
        WriteFrameLine(L"** END Vantor log file ");
    } catch (...) {  // the run ends all the same
    }
    mFile.Close();
}

void LogWriter::Write(std::wstring_view text, bool flushToDisk) noexcept {
    if (!IsActive()) {
        return;
    }
    try {
        ReportTimeGap();
        BeginLine();
        mFile.Write(mLine.Text(text).End());
        if (flushToDisk) {
            Flush();
        }
    } catch (...) {
        KeepFailure();
        Stop();
    }
}

void LogWriter::Flush() {
    if (IsActive()) {
        mFile.FlushToDisk();
    }
}

// Starts a line with its prefixes. Lines of the same millisecond share them: asking for the time of day costs more than
// building the line.
void LogWriter::BeginLine() {
    std::optional<std::uint32_t> tick;
    if (mOptions.showMilliseconds) {
        tick = mClock.TickMilliseconds();
        if (tick == mPrefixTick) {
            mLine.BeginAgain();
            return;
        }
    }
    BeginRawLine();
    if (tick) {
        mLine.Tick(*tick);
    }
    if (mOptions.showTimestamp) {
        mLine.Stamp(mClock.LocalNow()).Text(L"  ");
    }
    mLine.MarkPrefix();
    mPrefixTick = tick;
}

LogLine& LogWriter::BeginRawLine() {
    mPrefixTick.reset();
    return mLine.Begin();
}

void LogWriter::WriteFrameLine(std::wstring_view before) {
    mFile.Write(BeginRawLine().Text(before).Stamp(mClock.LocalNow()).Text(L" **").End());
}

void LogWriter::ReportTimeGap() {
    if (!mGap.IsWatching()) {
        return;
    }
    if (const auto seconds = mGap.Note(mClock.TickMilliseconds())) {
        BeginRawLine().Text(L"---- ").Text(std::to_wstring(*seconds)).Text(L" seconds since previous write");
        mFile.Write(mLine.End());
    }
}

// Keeps the failure that is being handled, by the number that automation clients know and its text.
void LogWriter::KeepFailure() noexcept {
    try {
        mError = CurrentFailureText();
    } catch (...) {
        mError.clear();  // not even room for the text
    }
}

}  // namespace v5
