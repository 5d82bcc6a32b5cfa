// What reading a site needs from the machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace v5 {

class SiteHost {
  public:
    virtual ~SiteHost() = default;

    // `text` with every %NAME% of a defined environment variable replaced; references to undefined ones stay.
    virtual std::wstring ExpandEnvironment(const std::wstring& text) const = 0;

    // The full path of a path that exists, which may be relative to the current directory. The path itself when the
    // system does not tell.
    virtual std::wstring FullPath(const std::wstring& path) const = 0;

    // Whether the path names an existing folder, or an existing file that is no folder. Never fail.
    virtual bool FolderExists(const std::wstring& path) const = 0;
    virtual bool FileExists(const std::wstring& path) const = 0;

    // Reads a whole text file, in the machine's ANSI code page unless a mark at its start says UTF-8 or UTF-16. Gives
    // an empty text, or the reason why it cannot be read in the system's words.
    virtual std::wstring ReadFile(const std::wstring& path, std::wstring& text) const = 0;

    // Creates one folder, whose parent exists. Gives an empty text, or the reason in the system's words.
    virtual std::wstring CreateFolder(const std::wstring& path) = 0;

    // The folder that holds this library's own file, and the system's folder for temporary files; neither ends in a
    // backslash.
    virtual std::wstring LibraryFolder() const = 0;
    virtual std::wstring TemporaryFolder() const = 0;

    // The name of the computer that the process runs on.
    virtual std::wstring LocalComputerName() const = 0;

    // Whether `name` is that computer, by its short or its fully qualified name, without regard to case.
    virtual bool IsLocalComputer(const std::wstring& name) const = 0;

    // The processors of the machine that processes may use, one bit each; nullopt when the system does not tell.
    virtual std::optional<std::uint64_t> SystemAffinityMask() const = 0;

    // Pins this process to processors. False when the system refuses.
    virtual bool SetProcessAffinityMask(std::uint64_t mask) = 0;
};

}  // namespace v5
