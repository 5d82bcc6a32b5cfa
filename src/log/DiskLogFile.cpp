#include "log/DiskLogFile.h"

#include "platform/AnsiCodePage.h"

namespace v5 {

std::uint32_t DiskLogFile::Open(const std::wstring& path) {
    mFile = CreateFileA(ToAnsi(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                        FILE_FLAG_WRITE_THROUGH, nullptr);
    return IsOpen() ? 0 : GetLastError();
}

void DiskLogFile::SeekToEnd() {
    SetFilePointerEx(mFile, {}, nullptr, FILE_END);  // beyond 4 GB, too
}

void DiskLogFile::Write(std::string_view bytes) {
    DWORD written = 0;
    WriteFile(mFile, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

void DiskLogFile::FlushToDisk() {
    FlushFileBuffers(mFile);
}

void DiskLogFile::Close() {
    if (IsOpen()) {
        CloseHandle(mFile);
        mFile = INVALID_HANDLE_VALUE;
    }
}

}  // namespace v5
