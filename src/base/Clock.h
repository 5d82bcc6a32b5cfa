// The time of day and the millisecond tick, as the rules ask for them: a port, so that no test sleeps.
#pragma once

#include <cstdint>

#include "base/Dates.h"

namespace v5 {

class Clock {
  public:
    virtual ~Clock() = default;

    // The current local date and time, to the second.
    virtual CivilDateTime LocalNow() const = 0;

    // A counter of milliseconds that wraps at 2^32 (timeGetTime on Windows).
    virtual std::uint32_t TickMilliseconds() const = 0;
};

}  // namespace v5
