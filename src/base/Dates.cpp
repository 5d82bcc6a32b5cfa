#include "base/Dates.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <stdexcept>

#include "base/Text.h"

namespace v5 {

namespace {

using namespace std::chrono;

constexpr sys_days kZero = 1899y / December / 30;  // automation date 0
constexpr sys_days kFirstDay = year{kMinYear} / January / 1;
constexpr sys_days kLastDay = year{kMaxYear} / December / 31;
constexpr std::int64_t kSecondsPerDay = seconds(days(1)).count();

sys_days DayOf(const CivilDateTime& time) {
    return year{time.year} / time.month / time.day;
}

seconds TimeOfDay(const CivilDateTime& time) {
    return hours(time.hour) + minutes(time.minute) + seconds(time.second);
}

CivilDateTime FromMoment(sys_seconds moment) {
    const sys_days day = floor<days>(moment);
    if (day < kFirstDay || day > kLastDay) {
        throw std::out_of_range("date outside the years 100 to 9999");
    }
    const year_month_day date = day;
    const hh_mm_ss time(moment - day);
    return {int{date.year()},
            static_cast<int>(unsigned{date.month()}),
            static_cast<int>(unsigned{date.day()}),
            static_cast<int>(time.hours().count()),
            static_cast<int>(time.minutes().count()),
            static_cast<int>(time.seconds().count())};
}

CivilDateTime AddMonths(CivilDateTime time, std::int64_t count) {
    const std::int64_t months = time.year * std::int64_t{12} + time.month - 1 + count;
    if (months < std::int64_t{kMinYear} * 12 || months >= std::int64_t{kMaxYear + 1} * 12) {
        throw std::out_of_range("date outside the years 100 to 9999");
    }
    time.year = static_cast<int>(months / 12);
    time.month = static_cast<int>(months % 12) + 1;
    time.day = std::min(time.day, DaysInMonth(time.year, time.month));
    return time;
}

struct Unit {
    std::wstring_view letters;
    std::int64_t months;   // the unit in months …
    std::int64_t seconds;  // … or in seconds
};

constexpr Unit kUnits[] = {
    {L"yyyy", 12, 0},
    {L"q", 3, 0},
    {L"m", 1, 0},
    {L"y", 0, kSecondsPerDay},
    {L"d", 0, kSecondsPerDay},
    {L"w", 0, 7 * kSecondsPerDay},
    {L"ww", 0, 7 * kSecondsPerDay},
    {L"h", 0, 3600},
    {L"n", 0, 60},
    {L"s", 0, 1},
};

std::wstring FormatTimestamp(const CivilDateTime& time, int shownHour) {
    return ZeroPadded(time.year, 4) + L'-' + ZeroPadded(time.month, 2) + L'-' + ZeroPadded(time.day, 2) + L' ' +
           ZeroPadded(shownHour, 2) + L':' + ZeroPadded(time.minute, 2) + L':' + ZeroPadded(time.second, 2);
}

}  // namespace

int DaysInMonth(int year, int month) {
    return static_cast<int>(unsigned{(std::chrono::year{year} / month / last).day()});
}

int Weekday(const CivilDateTime& date) {
    return static_cast<int>(weekday(DayOf(date)).c_encoding()) + 1;
}

std::wstring FormatTimestamp24(const CivilDateTime& time) {
    return FormatTimestamp(time, time.hour);
}

std::wstring FormatTimestamp12(const CivilDateTime& time) {
    const int shownHour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return FormatTimestamp(time, shownHour) + (time.hour < 12 ? L" AM" : L" PM");
}

double ToAutomationDate(const CivilDateTime& time) {
    const auto day = static_cast<double>((DayOf(time) - kZero).count());
    const double fraction = static_cast<double>(TimeOfDay(time).count()) / static_cast<double>(kSecondsPerDay);
    return day < 0 ? day - fraction : day + fraction;
}

CivilDateTime FromAutomationDate(double date) {
    const auto first = static_cast<double>((kFirstDay - kZero).count());
    const auto last = static_cast<double>((kLastDay - kZero).count());
    if (!(date > first - 1 && date < last + 1)) {
        throw std::out_of_range("date outside the years 100 to 9999");
    }
    const double day = std::trunc(date);
    const double fraction = std::round(std::fabs(date - day) * static_cast<double>(kSecondsPerDay));
    return FromMoment(kZero + days(static_cast<int>(day)) + seconds(static_cast<int>(fraction)));
}

CivilDateTime AddInterval(std::wstring_view unit, std::int32_t count, const CivilDateTime& time) {
    const auto* found = std::find_if(std::begin(kUnits), std::end(kUnits),
                                     [&](const Unit& each) { return EqualsIgnoreCase(each.letters, unit); });
    if (found == std::end(kUnits)) {
        throw std::invalid_argument("unknown date interval");
    }
    if (found->months != 0) {
        return AddMonths(time, found->months * count);
    }
    return FromMoment(DayOf(time) + TimeOfDay(time) + seconds(found->seconds * count));
}

}  // namespace v5
