// The machine that a log runs on.
#pragma once

#include "log/LogPorts.h"

namespace v5 {

class WindowsLogHost : public LogHost {
  public:
    std::wstring LibraryFolder() const override;
    std::wstring SystemErrorText(std::uint32_t code) const override;
    std::wstring LongDateAndTime(const CivilDateTime& time) const override;
    std::wstring ReleaseNumber(ReleaseKind kind) const override;
    std::wstring ComputerName() const override;
    std::wstring OperatingSystem() const override;
};

}  // namespace v5
