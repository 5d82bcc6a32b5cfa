#include "log/TimeGap.h"

namespace v5 {

namespace {

constexpr std::uint32_t kWrap = 1u << 30;  // ms

}  // namespace

std::optional<std::int32_t> TimeGap::Note(std::uint32_t tickMilliseconds) {
    if (!IsWatching()) {
        return std::nullopt;
    }
    const std::uint32_t previous = mLastTick;
    mLastTick = tickMilliseconds;
    if (previous == 0) {
        return std::nullopt;
    }
    const std::uint32_t elapsed = (tickMilliseconds - previous) % kWrap;  // unsigned: wraps as both were masked
    const auto seconds = static_cast<std::int32_t>(elapsed / 1000);
    return seconds > mMaxSeconds ? std::optional(seconds) : std::nullopt;
}

}  // namespace v5
