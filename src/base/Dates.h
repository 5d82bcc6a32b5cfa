// Calendar dates and automation dates (days since 30 December 1899 as a double).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace v5 {

// The years that an automation date can express.
inline constexpr int kMinYear = 100;
inline constexpr int kMaxYear = 9999;

// A local date and time in the Gregorian calendar. Year 100 to 9999, month 1 to 12, day 1 to 31, hour 0 to 23,
// minute and second 0 to 59.
struct CivilDateTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const CivilDateTime&) const = default;
};

// The number of days (28 to 31) of a month (1 to 12).
int DaysInMonth(int year, int month);

// The day of the week, Sunday 1 to Saturday 7. The time of day does not matter.
int Weekday(const CivilDateTime& date);

// "2014-03-05 14:07:09" (yyyy-MM-dd HH:mm:ss).
std::wstring FormatTimestamp24(const CivilDateTime& time);

// "2014-03-05 02:07:09 PM": the same on a 12-hour clock, on which midnight and noon read 12.
std::wstring FormatTimestamp12(const CivilDateTime& time);

// The automation date of a date and time: the fraction is the time of day, and before 30 December 1899 it counts
// away from zero, so that -1.25 is 29 December 1899 at 06:00.
double ToAutomationDate(const CivilDateTime& time);

// The date and time of an automation date, rounded to the nearest second as the run-time does (half a second before
// midnight is already the next day). Throws std::out_of_range outside the years 100 to 9999 and for what is no number.
CivilDateTime FromAutomationDate(double date);

// `time` moved by `count` units (negative: back). The unit is one of the usual interval letters, in any case: "yyyy"
// years, "q" quarters, "m" months, "y" and "d" days, "w" and "ww" weeks (never working days), "h" hours, "n"
// minutes, "s" seconds. Years, quarters and months keep the day of the month, or take the month's last day when it
// has no such day. The sum is whole seconds on a calendar date, so nothing of a floating-point residue is left in it.
// Throws std::invalid_argument for another unit and std::out_of_range when the sum leaves the years 100 to 9999.
CivilDateTime AddInterval(std::wstring_view unit, std::int32_t count, const CivilDateTime& time);

}  // namespace v5
