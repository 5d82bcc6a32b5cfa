#include "platform/SystemClock.h"

#include <windows.h>

#include <mmsystem.h>

#include "platform/SystemFunction.h"

namespace v5 {

CivilDateTime SystemClock::LocalNow() const {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::uint32_t SystemClock::TickMilliseconds() const {
    static const auto tick = SystemFunction<decltype(timeGetTime)>(L"winmm.dll", "timeGetTime");
    return tick();
}

}  // namespace v5
