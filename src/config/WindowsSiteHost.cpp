#include "config/WindowsSiteHost.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "base/Text.h"
#include "platform/AnsiCodePage.h"
#include "platform/FileSystem.h"
#include "platform/Module.h"
#include "platform/SystemInfo.h"
#include "platform/SystemText.h"

namespace v5 {

namespace {

std::wstring LastErrorText() {
    return SystemText(HRESULT_FROM_WIN32(GetLastError()));
}

// An open file, closed at the end of its life.
class ReadableFile {
  public:
    explicit ReadableFile(const std::wstring& path)
        : mHandle(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {}
    ~ReadableFile() {
        if (IsOpen()) {
            CloseHandle(mHandle);
        }
    }
    ReadableFile(const ReadableFile&) = delete;
    ReadableFile& operator=(const ReadableFile&) = delete;

    bool IsOpen() const { return mHandle != INVALID_HANDLE_VALUE; }

    // The whole file, however much it grows or shrinks meanwhile; false when the system fails.
    bool ReadAll(std::string& bytes) const {
        LARGE_INTEGER size;
        if (!GetFileSizeEx(mHandle, &size)) {
            return false;
        }
        constexpr DWORD kAtLeast = 4096;  // one more read than the size asks for finds the end of the file
        constexpr size_t kAtMost = 1u << 30;
        size_t length = 0;
        bytes.resize(static_cast<size_t>(size.QuadPart) + 1);
        while (true) {
            DWORD got = 0;
            const size_t room = std::min(bytes.size() - length, kAtMost);
            if (!::ReadFile(mHandle, bytes.data() + length, static_cast<DWORD>(room), &got, nullptr)) {
                return false;
            }
            length += got;
            if (got == 0) {
                bytes.resize(length);
                return true;
            }
            if (length == bytes.size()) {
                bytes.resize(length + kAtLeast);
            }
        }
    }

  private:
    HANDLE mHandle;
};

// One of the machine's names; empty when it has none of this kind.
std::wstring ComputerName(COMPUTER_NAME_FORMAT format) {
    DWORD size = 0;
    GetComputerNameExW(format, nullptr, &size);
    std::wstring name(size, L'\0');
    if (size == 0 || !GetComputerNameExW(format, name.data(), &size)) {
        return {};
    }
    name.resize(size);
    return name;
}

// The short name that Windows networking uses, cut to 15 characters and in upper case, then those of the DNS.
std::vector<std::wstring> ComputerNames() {
    return {ComputerName(ComputerNameNetBIOS), ComputerName(ComputerNameDnsHostname),
            ComputerName(ComputerNameDnsFullyQualified)};
}

}  // namespace

std::wstring WindowsSiteHost::ExpandEnvironment(const std::wstring& text) const {
    const DWORD size = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
    std::wstring expanded(size, L'\0');
    const DWORD used = ExpandEnvironmentStringsW(text.c_str(), expanded.data(), size);
    if (used == 0 || used > size) {
        return text;
    }
    expanded.resize(used - 1);  // without the final NUL
    return expanded;
}

std::wstring WindowsSiteHost::FullPath(const std::wstring& path) const {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size()) {
        return path;
    }
    full.resize(length);
    return full;
}

bool WindowsSiteHost::FolderExists(const std::wstring& path) const {
    return v5::FolderExists(path);
}

bool WindowsSiteHost::FileExists(const std::wstring& path) const {
    return v5::FileExists(path);
}

std::wstring WindowsSiteHost::ReadFile(const std::wstring& path, std::wstring& text) const {
    const ReadableFile file(path);
    std::string bytes;
    if (!file.IsOpen() || !file.ReadAll(bytes)) {
        return LastErrorText();
    }
    text = FromTextFile(bytes);
    return {};
}

std::wstring WindowsSiteHost::CreateFolder(const std::wstring& path) {
    return CreateDirectoryW(path.c_str(), nullptr) ? std::wstring() : LastErrorText();
}

std::wstring WindowsSiteHost::LibraryFolder() const {
    return ModuleFolder();
}

std::wstring WindowsSiteHost::TemporaryFolder() const {
    wchar_t folder[MAX_PATH + 1] = L"";
    GetTempPathW(MAX_PATH + 1, folder);
    return WithoutTrailingBackslash(folder);
}

std::wstring WindowsSiteHost::LocalComputerName() const {
    return v5::LocalComputerName();
}

bool WindowsSiteHost::IsLocalComputer(const std::wstring& name) const {
    // Asked for once: a computer gets another name only when it restarts, and asking is slow.
    static const std::vector<std::wstring> names = ComputerNames();
    return !name.empty() &&
           std::any_of(names.begin(), names.end(), [&](const auto& local) { return EqualsIgnoreCase(name, local); });
}

std::optional<std::uint64_t> WindowsSiteHost::SystemAffinityMask() const {
    DWORD_PTR process = 0;
    DWORD_PTR system = 0;
    return GetProcessAffinityMask(GetCurrentProcess(), &process, &system) ? std::optional<std::uint64_t>(system)
                                                                          : std::nullopt;
}

bool WindowsSiteHost::SetProcessAffinityMask(std::uint64_t mask) {
    return ::SetProcessAffinityMask(GetCurrentProcess(), static_cast<DWORD_PTR>(mask)) != FALSE;
}

}  // namespace v5
