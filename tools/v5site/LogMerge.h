// The logs of several programs in one order of time.
//
// A log consists of runs, each from a line "** START … **" to one "** END … **"; what a run writes may carry a tick
// (the computer's milliseconds since its start, 13 columns), a time stamp (yyyy-MM-dd hh:mm:ss AM/PM), both or neither.
// Lines are ordered by their stamps, and within a second by their ticks; a tick without a stamp counts from its run's
// START line. A line with neither, or of a header, belongs to the line before. The lines of one file keep their order.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace v5site {

// The bytes of a log file, from its start.
class LogSource {
  public:
    virtual ~LogSource() = default;

    // Puts the next bytes into `buffer`, at most `size`; 0 at the end.
    virtual size_t Read(char* buffer, size_t size) = 0;
};

struct LogInput {
    std::string name;  // as the output calls it, UTF-8
    std::unique_ptr<LogSource> source;
};

struct LogOptions {
    std::int64_t from = INT64_MIN, to = INT64_MAX;  // seconds of the calendar, as LogTime gives them
    std::string grep;                               // UTF-8; only lines that hold this text, ASCII letters in any case
    bool json = false;
};

// The number of seconds that stands for a local time "yyyy-MM-dd[ HH:mm[:ss]]"; only their order means something.
std::int64_t LogTime(std::string_view text);

struct LogSummary {
    std::uint64_t lines = 0;  // read
    std::uint64_t shown = 0;
    std::uint64_t missingEnds = 0;  // runs without an END line, the last of a file included: it may still go on
    bool isWritten = true;          // whether the output took everything
};

// Merges the logs. `toUtf8` turns a text of the files into UTF-8; `write` takes the output piece by piece and answers
// whether it could. Memory depends on the longest line alone. What is no line of a log stands in the output as a
// remark: a restart, a missing END line, a gap, an hour that the end of summer time repeats.
LogSummary MergeLogs(std::vector<LogInput> inputs, const LogOptions& options,
                     const std::function<std::string(std::string_view)>& toUtf8,
                     const std::function<bool(std::string_view)>& write);

}  // namespace v5site
