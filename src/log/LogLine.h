// One line of a log file, built in place: the same storage serves every line, so that writing allocates nothing once
// the longest line has been seen.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Dates.h"

namespace v5 {

class CodePage;

class LogLine {
  public:
    // `codePage` outlives the line; it is asked only for text that is not plain ASCII.
    explicit LogLine(const CodePage& codePage) : mCodePage(codePage) {}

    // Starts the next line.
    LogLine& Begin();

    // Makes what the line has so far the prefix that BeginAgain starts the following lines with, until the next Begin.
    void MarkPrefix() { mPrefixLength = mLength; }
    void BeginAgain() { mLength = mPrefixLength; }

    // The tick field: the millisecond tick without its top bit, in decimal, blanks up to 13 columns.
    LogLine& Tick(std::uint32_t tickMilliseconds);

    // The date and time on a 12-hour clock, "2014-03-05 02:07:09 PM".
    LogLine& Stamp(const CivilDateTime& time);

    // Any text, one byte for each unit; line breaks and null characters inside stay as they are.
    LogLine& Text(std::wstring_view text);

    // Ends the line with a carriage return and a line feed. The bytes are valid until the next Begin.
    std::string_view End();

  private:
    char* Extend(size_t count);

    const CodePage& mCodePage;
    std::string mBytes;  // as long as the longest line so far
    size_t mLength = 0;  // of the line
    size_t mPrefixLength = 0;
    CivilDateTime mStampTime;
    std::array<char, 22> mStamp{};  // of mStampTime: lines of the same second share it
    bool mIsStamped = false;
};

}  // namespace v5
