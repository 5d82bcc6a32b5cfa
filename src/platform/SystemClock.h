// The machine's clock: local time and the multimedia tick.
#pragma once

#include "base/Clock.h"

namespace v5 {

class SystemClock : public Clock {
  public:
    CivilDateTime LocalNow() const override;
    std::uint32_t TickMilliseconds() const override;
};

}  // namespace v5
