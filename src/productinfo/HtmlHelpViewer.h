// The system's HTML help viewer.
#pragma once

#include <windows.h>

#include "productinfo/HelpLauncher.h"

namespace v5 {

class HtmlHelpViewer final : public HelpViewer {
  public:
    // `owner` owns the help window and may be null.
    explicit HtmlHelpViewer(HWND owner) : mOwner(owner) {}

    bool FileExists(std::wstring_view path) const override;
    void Open(std::wstring_view path) override;

  private:
    HWND mOwner;
};

}  // namespace v5
