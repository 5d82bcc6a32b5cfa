// The machine's clock: local time and the multimedia tick.
#pragma once

#include <cstdint>

#include "base/Clock.h"

namespace v5 {

class SystemClock : public Clock {
  public:
    CivilDateTime LocalNow() const override;
    std::uint32_t TickMilliseconds() const override;

  private:
    // The last answer: a clock is asked far more often than the second changes, and the way from universal to local
    // time is the expensive part.
    mutable std::uint64_t second_ = 0;  // since 1601, universal time
    mutable CivilDateTime local_;
};

}  // namespace v5
