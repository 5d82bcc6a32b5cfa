// What a log needs from the machine, apart from the time (base/Clock.h). Ports: the tests have their own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/CodePage.h"
#include "base/Dates.h"
#include "productinfo/ReleaseNumber.h"

namespace v5 {

// The one file that a log writes to.
class LogFile {
  public:
    virtual ~LogFile() = default;

    // Opens the file for writing, creating it when it is missing and keeping it when it is there; others may read it
    // meanwhile but not write it. Called on a closed file only. Gives 0, or the system's error code, and the file is
    // then still closed.
    virtual std::uint32_t Open(const std::wstring& path) = 0;
    virtual bool IsOpen() const = 0;

    // The rest is called on an open file only. None of it reports failure: a log must not disturb its program.
    virtual void SeekToEnd() = 0;
    virtual void Write(std::string_view bytes) = 0;  // one call to the system, through to the disk
    virtual void FlushToDisk() = 0;
    virtual void Close() = 0;  // the file is closed afterwards, whatever happens
};

// Where the log runs. Every function may throw; the header's do so to the log's caller.
class LogHost {
  public:
    virtual ~LogHost() = default;

    // Folder of the library's own file, without a trailing backslash.
    virtual std::wstring LibraryFolder() const = 0;

    // The system's message for one of its error codes, unchanged (it ends with a line break); empty when there is none.
    virtual std::wstring SystemErrorText(std::uint32_t code) const = 0;

    // Date and time in the user's "long" formats, one blank between them.
    virtual std::wstring LongDateAndTime(const CivilDateTime& time) const = 0;

    // Release number as the facade gives it, without a message sink; empty when the package is not installed.
    virtual std::wstring ReleaseNumber(ReleaseKind kind) const = 0;

    virtual std::wstring ComputerName() const = 0;

    // One line that tells a support engineer what the machine runs.
    virtual std::wstring OperatingSystem() const = 0;
};

}  // namespace v5
