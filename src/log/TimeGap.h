// Watches for silence: tells when more time than expected has passed since a log's previous line.
#pragma once

#include <cstdint>
#include <optional>

namespace v5 {

class TimeGap {
  public:
    // The longest gap, in seconds, that is not worth a report. 0 or less: nothing is watched.
    void Expect(std::int32_t seconds) { mMaxSeconds = seconds > 0 ? seconds : 0; }
    bool IsWatching() const { return mMaxSeconds > 0; }

    // Notes a write at a millisecond tick and gives the whole seconds since the previous one when they are more than
    // expected. Nothing is noted while nothing is watched. A previous tick of 0 counts as none. Gaps are known modulo
    // 2^30 ms (12.4 days).
    std::optional<std::int32_t> Note(std::uint32_t tickMilliseconds);

  private:
    std::int32_t mMaxSeconds = 0;
    std::uint32_t mLastTick = 0;
};

}  // namespace v5
