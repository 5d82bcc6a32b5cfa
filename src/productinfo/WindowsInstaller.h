// The Windows Installer, through its automation object "WindowsInstaller.Installer".
#pragma once

#include <optional>

#include "com/LateBound.h"
#include "productinfo/WindowsInstallerFunctions.h"

namespace v5 {

class WindowsInstaller final : public InstallerQueries {
  public:
    std::wstring RelatedProduct(std::wstring_view upgradeCode) override;
    std::wstring ProductInfo(std::wstring_view productCode, std::wstring_view attribute) override;
    std::wstring ComponentPath(std::wstring_view productCode, std::wstring_view componentCode) override;

  private:
    // The installer object, created by the first query; each query tries again while that fails.
    const LateBound& Installer();

    std::optional<LateBound> mInstaller;
};

}  // namespace v5
