// The machine that the process runs on, as reading a site needs it.
#pragma once

#include "config/SiteHost.h"

namespace v5 {

class WindowsSiteHost : public SiteHost {
  public:
    std::wstring ExpandEnvironment(const std::wstring& text) const override;
    std::wstring FullPath(const std::wstring& path) const override;
    bool FolderExists(const std::wstring& path) const override;
    bool FileExists(const std::wstring& path) const override;
    std::wstring ReadFile(const std::wstring& path, std::wstring& text) const override;
    std::wstring CreateFolder(const std::wstring& path) override;
    std::wstring LibraryFolder() const override;
    std::wstring TemporaryFolder() const override;
    std::wstring LocalComputerName() const override;
    bool IsLocalComputer(const std::wstring& name) const override;
    std::optional<std::uint64_t> SystemAffinityMask() const override;
    bool SetProcessAffinityMask(std::uint64_t mask) override;
};

}  // namespace v5
