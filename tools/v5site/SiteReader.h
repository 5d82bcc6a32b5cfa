// A site as the product's programs see it, read by the library's own rules and without a trace: nothing is created, and
// no processor is pinned.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "config/Site.h"
#include "config/WindowsSiteHost.h"

namespace v5site {

// A place where a site file was looked for.
struct Attempt {
    std::wstring path;
    bool isThere = false;
};

// The machine, looked at only.
class LookingHost final : public v5::WindowsSiteHost {
  public:
    bool FileExists(const std::wstring& path) const override;
    std::wstring ReadFile(const std::wstring& path, std::wstring& text) const override;
    std::wstring CreateFolder(const std::wstring&) override { return {}; }
    bool SetProcessAffinityMask(std::uint64_t) override { return true; }

    // The folder of the registered V5Strings.dll of this width, where there is one, else this program's.
    std::wstring LibraryFolder() const override;

    // Where the search has looked so far.
    const std::vector<Attempt>& Attempts() const { return mAttempts; }

    // What was read; empty when there was no file that could be.
    const std::wstring& Text() const { return mText; }

  private:
    mutable std::vector<Attempt> mAttempts;
    mutable std::wstring mText;
};

class SiteReader {
  public:
    // Finds and reads the site file, or reads the one at `file`; the connection strings in the form that `line` asks
    // for.
    SiteReader(const CommandLine& line, const std::optional<std::wstring>& file);

    bool IsUsable() const { return mIsUsable; }
    const v5::Site& Site() const { return mSite; }
    v5::Site& Site() { return mSite; }
    const LookingHost& Host() const { return mHost; }

    // Makes the DAHS that the command line asks for the current one; false when there is no such DAHS.
    bool Choose(const CommandLine& line);

  private:
    LookingHost mHost;
    v5::Site mSite;
    const bool mIsUsable;
};

// The path of the V5Strings.dll that is registered for programs of a width (32 or 64 bits); empty when none is.
std::wstring RegisteredDll(int width);

}  // namespace v5site
