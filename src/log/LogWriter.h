// A program's text log: opens, writes and closes one file at a time, each log run framed by a start and an end line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "log/LogLine.h"
#include "log/LogPorts.h"
#include "log/TimeGap.h"

namespace v5 {

// How the lines of a log run look.
struct LogOptions {
    bool showMilliseconds = false;       // tick field first
    bool showTimestamp = false;          // then date and time and two blanks
    std::int32_t maxTimeGapSeconds = 0;  // report longer gaps between lines; 0 or less: report none
};

class LogWriter {
  public:
    // The ports outlive the writer. Nothing is opened yet.
    LogWriter(LogFile& file, const Clock& clock, const CodePage& codePage, const LogHost& host)
        : mFile(file), mClock(clock), mHost(host), mLine(codePage) {}

    // An active log gets a line that says so, and its end line.
    ~LogWriter();

    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Whether a log run is open.
    bool IsActive() const { return mFile.IsOpen(); }

    // Full path of the current or last log file; empty before the first Start.
    const std::wstring& Filename() const { return mFilename; }

    // Why the last Start or write failed; empty after a Start that went well.
    const std::wstring& Error() const { return mError; }

    // Ends an active log run and starts one in `filename`; a name without a backslash stands for a file in the
    // library's folder. A title that is not empty begins the run with the boxed header. False when the file cannot be
    // opened: Error() then holds the system's message and the log stays inactive. What goes wrong while the header is
    // assembled is thrown, with the log active and the start line written.
    bool Start(std::wstring_view filename, std::wstring_view title, const LogOptions& options);

    // Writes the end line and closes the file; does nothing when no log run is open. Failures are forgotten.
    void Stop() noexcept;

    // Writes one line, in one call to the system, and flushes the file's buffers when asked to. Does nothing when no
    // log run is open. A failure inside ends the run and is kept in Error() as a run-time error number and its text.
    void Write(std::wstring_view text, bool flushToDisk = false) noexcept;

    // Flushes the file's buffers; does nothing when no log run is open.
    void Flush();

  private:
    void BeginLine();
    LogLine& BeginRawLine();
    void WriteFrameLine(std::wstring_view before);
    void ReportTimeGap();
    void KeepFailure() noexcept;

    LogFile& mFile;
    const Clock& mClock;
    const LogHost& mHost;
    LogLine mLine;
    LogOptions mOptions;
    TimeGap mGap;
    std::optional<std::uint32_t> mPrefixTick;  // when the prefix in mLine was made; none when there is none to share
    std::wstring mFilename;
    std::wstring mError;
};

}  // namespace v5
