// A log's file on disk: written through, shared with readers only.
#pragma once

#include <windows.h>

#include "log/LogPorts.h"

namespace v5 {

class DiskLogFile final : public LogFile {
  public:
    DiskLogFile() = default;
    ~DiskLogFile() override { DiskLogFile::Close(); }
    DiskLogFile(const DiskLogFile&) = delete;
    DiskLogFile& operator=(const DiskLogFile&) = delete;

    // The name goes through the ANSI code page, as names of log files always have: one that needs characters which the
    // code page lacks cannot be opened.
    std::uint32_t Open(const std::wstring& path) override;
    bool IsOpen() const override { return mFile != INVALID_HANDLE_VALUE; }
    void SeekToEnd() override;
    void Write(std::string_view bytes) override;
    void FlushToDisk() override;
    void Close() override;

  private:
    HANDLE mFile = INVALID_HANDLE_VALUE;
};

}  // namespace v5
