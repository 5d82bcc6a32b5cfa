#include "base/Dates.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/Text.h"

namespace v5 {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

// Automation dates of 1 January 100 and of 31 December 9999.
constexpr std::int64_t kFirstDay = -657434;
constexpr std::int64_t kLastDay = 2958465;

// The calendar repeats every 400 years. Counted from 1 March, so that the leap day ends a year, the day within such
// an era follows from year, month and day without a table.
constexpr std::int64_t kDaysPerEra = 146097;
constexpr std::int64_t kEraDaysBefore1899 = 693899;  // 1 March of year 0 to 30 December 1899

std::int64_t DayNumber(int year, int month, int day) {
    const std::int64_t marchYear = month <= 2 ? year - 1 : year;
    const std::int64_t era = marchYear / 400;
    const std::int64_t yearOfEra = marchYear % 400;
    const std::int64_t dayOfYear = (153 * ((month + 9) % 12) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysPerEra + dayOfEra - kEraDaysBefore1899;
}

CivilDateTime DateOfDayNumber(std::int64_t dayNumber) {
    if (dayNumber < kFirstDay || dayNumber > kLastDay) {
        throw std::out_of_range("date outside the years 100 to 9999");
    }
    const std::int64_t days = dayNumber + kEraDaysBefore1899;
    const std::int64_t era = days / kDaysPerEra;
    const std::int64_t dayOfEra = days % kDaysPerEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t marchMonth = (5 * dayOfYear + 2) / 153;
    CivilDateTime date;
    date.month = static_cast<int>(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
    date.day = static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
    date.year = static_cast<int>(era * 400 + yearOfEra + (date.month <= 2 ? 1 : 0));
    return date;
}

std::int64_t DayNumber(const CivilDateTime& time) {
    return DayNumber(time.year, time.month, time.day);
}

std::int64_t SecondOfDay(const CivilDateTime& time) {
    return time.hour * 3600 + time.minute * 60 + time.second;
}

// The point in time `seconds` after midnight of a day; `seconds` may be negative or exceed a day.
CivilDateTime SecondsAfter(std::int64_t dayNumber, std::int64_t seconds) {
    std::int64_t days = seconds / kSecondsPerDay;
    std::int64_t rest = seconds % kSecondsPerDay;
    if (rest < 0) {
        rest += kSecondsPerDay;
        --days;
    }
    CivilDateTime time = DateOfDayNumber(dayNumber + days);
    time.hour = static_cast<int>(rest / 3600);
    time.minute = static_cast<int>(rest / 60 % 60);
    time.second = static_cast<int>(rest % 60);
    return time;
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

void AppendNumber(std::wstring& text, int number, size_t digits) {
    const std::wstring plain = std::to_wstring(number);
    text.append(digits - std::min(digits, plain.size()), L'0').append(plain);
}

std::wstring FormatTimestamp(const CivilDateTime& time, int shownHour) {
    std::wstring text;
    AppendNumber(text, time.year, 4);
    AppendNumber(text += L'-', time.month, 2);
    AppendNumber(text += L'-', time.day, 2);
    AppendNumber(text += L' ', shownHour, 2);
    AppendNumber(text += L':', time.minute, 2);
    AppendNumber(text += L':', time.second, 2);
    return text;
}

}  // namespace

int DaysInMonth(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leapYear = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leapYear ? 29 : kDays[month - 1];
}

int Weekday(const CivilDateTime& date) {
    // 30 December 1899 was a Saturday.
    const auto sinceSaturday = static_cast<int>(DayNumber(date) % 7);
    return (sinceSaturday + 6) % 7 + 1;
}

std::wstring FormatTimestamp24(const CivilDateTime& time) {
    return FormatTimestamp(time, time.hour);
}

std::wstring FormatTimestamp12(const CivilDateTime& time) {
    const int shownHour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return FormatTimestamp(time, shownHour) + (time.hour < 12 ? L" AM" : L" PM");
}

double ToAutomationDate(const CivilDateTime& time) {
    const auto day = static_cast<double>(DayNumber(time));
    const double fraction = static_cast<double>(SecondOfDay(time)) / static_cast<double>(kSecondsPerDay);
    return day < 0 ? day - fraction : day + fraction;
}

CivilDateTime FromAutomationDate(double date) {
    if (!(date > static_cast<double>(kFirstDay - 1) && date < static_cast<double>(kLastDay + 1))) {
        throw std::out_of_range("date outside the years 100 to 9999");
    }
    const double day = std::trunc(date);
    const double seconds = std::round(std::fabs(date - day) * static_cast<double>(kSecondsPerDay));
    return SecondsAfter(static_cast<std::int64_t>(day), static_cast<std::int64_t>(seconds));
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
    return SecondsAfter(DayNumber(time), SecondOfDay(time) + found->seconds * count);
}

}  // namespace v5
