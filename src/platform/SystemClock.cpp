#include "platform/SystemClock.h"

#include <windows.h>

#include <mmsystem.h>

namespace v5 {

CivilDateTime SystemClock::LocalNow() const {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::uint32_t SystemClock::TickMilliseconds() const {
    return timeGetTime();
}

}  // namespace v5
