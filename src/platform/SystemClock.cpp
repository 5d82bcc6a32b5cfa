#include "platform/SystemClock.h"

#include <windows.h>

#include <mmsystem.h>

namespace v5 {

namespace {

constexpr std::uint64_t kIntervalsPerSecond = 10'000'000;  // FILETIME counts 100 ns

}  // namespace

CivilDateTime SystemClock::LocalNow() const {
    FILETIME universal;
    GetSystemTimeAsFileTime(&universal);
    const std::uint64_t second =
        (std::uint64_t{universal.dwHighDateTime} << 32 | universal.dwLowDateTime) / kIntervalsPerSecond;
    if (second != second_) {
        SYSTEMTIME now;
        GetLocalTime(&now);
        local_ = {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
        second_ = second;
    }
    return local_;
}

std::uint32_t SystemClock::TickMilliseconds() const {
    return timeGetTime();
}

}  // namespace v5
