// Dates beside the library's calendar; the conversions beside the run-time's: windows/DatesOracleTest.cpp.
#include "base/Dates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace v5 {

namespace {

using namespace std::chrono;

CivilDateTime Civil(sys_seconds time) {
    const auto day = floor<days>(time);
    const year_month_day date = day;
    const hh_mm_ss clock(time - day);
    return {int{date.year()},           int(unsigned{date.month()}),  int(unsigned{date.day()}),
            int(clock.hours().count()), int(clock.minutes().count()), int(clock.seconds().count())};
}

constexpr sys_days kDayZero = 1899y / 12 / 30;

}  // namespace

// Every third day, so that each weekday, day of a month and turn of a month comes again and again.
TEST(Dates, TheWholeCalendar) {
    int second = 0;
    for (sys_days day = 100y / 1 / 1; day <= sys_days(9999y / 12 / 31); day += days(3)) {
        const auto number = static_cast<double>((day - kDayZero).count());
        second = (second + 7919) % 86400;
        const CivilDateTime time = Civil(day + seconds(second));
        // Before day 0 the fraction counts away from zero.
        const double date = number < 0 ? number - second / 86400.0 : number + second / 86400.0;
        const bool isRight = std::abs(ToAutomationDate(time) - date) < 1e-9 && FromAutomationDate(date) == time &&
                             Weekday(time) == static_cast<int>(weekday(day).c_encoding()) + 1;
        if (!isRight) {  // of millions, an assertion each takes its time
            FAIL() << date;
        }
    }
}

TEST(Dates, SecondsAreRoundedAndMayCarryIntoTheNextDay) {
    constexpr double kSecond = 1.0 / 86400;
    EXPECT_EQ(FromAutomationDate(10 + 0.4 * kSecond), (CivilDateTime{1900, 1, 9}));
    EXPECT_EQ(FromAutomationDate(10 + 0.6 * kSecond), (CivilDateTime{1900, 1, 9, 0, 0, 1}));
    EXPECT_EQ(FromAutomationDate(11 - 0.4 * kSecond), (CivilDateTime{1900, 1, 10}));
    EXPECT_EQ(FromAutomationDate(-2 + 0.4 * kSecond), (CivilDateTime{1899, 12, 30}));  // 29 December, last half second
    for (const double bad : {-657435.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::quiet_NaN(),
                             2958465.999999999 /* rounds up into the year 10000 */}) {
        EXPECT_THROW(FromAutomationDate(bad), std::out_of_range) << bad;
    }
}

TEST(Dates, SumsOfIntervals) {
    const std::pair<const wchar_t*, seconds> fixed[] = {{L"d", 24h}, {L"y", 24h},  {L"w", 168h}, {L"ww", 168h},
                                                        {L"h", 1h},  {L"n", 1min}, {L"S", 1s}};
    const std::pair<const wchar_t*, int> calendar[] = {{L"m", 1}, {L"Q", 3}, {L"yyyy", 12}};
    std::mt19937 random(1);
    for (int i = 0; i < 3'000; ++i) {
        const sys_days day = kDayZero + days(static_cast<int>(random() % 200'000) - 100'000);
        const seconds clock(random() % 86400);
        const CivilDateTime start = Civil(day + clock);
        const int count = static_cast<int>(random() % 2001) - 1000;
        for (const auto& [unit, length] : fixed) {
            ASSERT_EQ(AddInterval(unit, count, start), Civil(day + clock + count * length)) << count;
        }
        for (const auto& [unit, length] : calendar) {  // the month's last day, where it lacks the day
            const year_month_day date = day;
            const year_month month = date.year() / date.month() + months(count * length);
            const year_month_day sum = month / std::min(date.day(), year_month_day_last(month / last).day());
            ASSERT_EQ(AddInterval(unit, count, start), Civil(sys_days(sum) + clock)) << count;
        }
    }
}

TEST(Dates, SumsThatHaveNoAnswer) {
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_THROW(AddInterval(L"x", 1, {}), std::invalid_argument);
    EXPECT_THROW(AddInterval(L"", 1, {}), std::invalid_argument);
    for (const wchar_t* unit : {L"yyyy", L"q", L"m", L"d", L"ww"}) {
        EXPECT_THROW(AddInterval(unit, kMost, {}), std::out_of_range);
        EXPECT_THROW(AddInterval(unit, -kMost, {}), std::out_of_range);
    }
    EXPECT_THROW(AddInterval(L"s", 1, {9999, 12, 31, 23, 59, 59}), std::out_of_range);
    EXPECT_THROW(AddInterval(L"m", -1, {100, 1, 1}), std::out_of_range);
}

TEST(Dates, Timestamps) {
    EXPECT_EQ(FormatTimestamp24({2014, 3, 5, 14, 7, 9}), L"2014-03-05 14:07:09");
    EXPECT_EQ(FormatTimestamp24({100, 1, 1}), L"0100-01-01 00:00:00");
    const wchar_t* hours[] = {L"12", L"01", L"02", L"03", L"04", L"05", L"06", L"07", L"08", L"09", L"10", L"11"};
    for (int hour = 0; hour < 24; ++hour) {
        EXPECT_EQ(FormatTimestamp12({2014, 3, 5, hour, 7, 59}),
                  L"2014-03-05 " + std::wstring(hours[hour % 12]) + (hour < 12 ? L":07:59 AM" : L":07:59 PM"));
    }
}

}  // namespace v5
