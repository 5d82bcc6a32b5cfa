// The registry of this machine and user, in the view of this process's width.
#pragma once

#include "productinfo/RegistryReader.h"

namespace v5 {

class WindowsRegistry final : public RegistryReader {
  public:
    std::optional<std::wstring> ReadText(RegistryRoot root, std::wstring_view key,
                                         std::wstring_view value) const override;
};

}  // namespace v5
