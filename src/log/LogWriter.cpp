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
    filename_ = CompletePath(filename, host_);
    error_.clear();
    options_ = options;
    gap_.Expect(options.maxTimeGapSeconds);
    if (const std::uint32_t code = file_.Open(filename_); code != 0) {
        error_ = OpenErrorText(code, host_);
        return false;
    }
    file_.SeekToEnd();
    WriteFrameLine(L"** START Vantor log file  ");  // two blanks here, one at the end of the run: published so
    if (!title.empty()) {
        for (const std::wstring& line : LogHeader(host_, title, clock_.LocalNow(), filename_)) {
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
    file_.Close();
}

void LogWriter::Write(std::wstring_view text, bool flushToDisk) noexcept {
    if (!IsActive()) {
        return;
    }
    try {
        ReportTimeGap();
        BeginLine();
        file_.Write(line_.Text(text).End());
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
        file_.FlushToDisk();
    }
}

// Starts a line with its prefixes. Lines of the same millisecond share them: asking for the time of day costs more than
// building the line.
void LogWriter::BeginLine() {
    std::optional<std::uint32_t> tick;
    if (options_.showMilliseconds) {
        tick = clock_.TickMilliseconds();
        if (tick == prefixTick_) {
            line_.BeginAgain();
            return;
        }
    }
    BeginRawLine();
    if (tick) {
        line_.Tick(*tick);
    }
    if (options_.showTimestamp) {
        line_.Stamp(clock_.LocalNow()).Text(L"  ");
    }
    line_.MarkPrefix();
    prefixTick_ = tick;
}

LogLine& LogWriter::BeginRawLine() {
    prefixTick_.reset();
    return line_.Begin();
}

void LogWriter::WriteFrameLine(std::wstring_view before) {
    file_.Write(BeginRawLine().Text(before).Stamp(clock_.LocalNow()).Text(L" **").End());
}

void LogWriter::ReportTimeGap() {
    if (!gap_.IsWatching()) {
        return;
    }
    if (const auto seconds = gap_.Note(clock_.TickMilliseconds())) {
        BeginRawLine().Text(L"---- ").Text(std::to_wstring(*seconds)).Text(L" seconds since previous write");
        file_.Write(line_.End());
    }
}

// Keeps the failure that is being handled, by the number that automation clients know and its text.
void LogWriter::KeepFailure() noexcept {
    try {
        error_ = CurrentFailureText();
    } catch (...) {
        error_.clear();  // not even room for the text
    }
}

}  // namespace v5
