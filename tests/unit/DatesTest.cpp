#include "base/Dates.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace v5 {

TEST(Dates, AutomationDatesOfKnownDays) {
    const struct {
        CivilDateTime time;
        double date;
        int weekday;
    } cases[] = {
        {{1899, 12, 30}, 0.0, 7},         {{1899, 12, 29}, -1.0, 6},
        {{1899, 12, 29, 6}, -1.25, 6},  // before day 0 the fraction counts away from zero
        {{1899, 12, 30, 6}, 0.25, 7},     {{1900, 1, 1, 12}, 2.5, 2},
        {{2000, 2, 29, 18}, 36585.75, 3}, {{2014, 3, 5, 23, 59, 59}, 41703.0 + 86399.0 / 86400.0, 4},
        {{100, 1, 1, 12}, -657434.5, 6},  {{9999, 12, 31}, 2958465.0, 6},
    };
    for (const auto& each : cases) {
        EXPECT_DOUBLE_EQ(ToAutomationDate(each.time), each.date);
        EXPECT_EQ(FromAutomationDate(each.date), each.time) << each.date;
        EXPECT_EQ(Weekday(each.time), each.weekday) << each.date;
    }
}

TEST(Dates, EveryDayFollowsTheOneBefore) {
    // Walks the whole calendar by the rules of the months alone.
    CivilDateTime expected{kMinYear, 1, 1};
    int weekday = 6;
    for (double date = -657434; date <= 2958465; ++date) {
        ASSERT_EQ(FromAutomationDate(date), expected) << date;
        ASSERT_EQ(ToAutomationDate(expected), date);
        ASSERT_EQ(Weekday(expected), weekday) << date;
        weekday = weekday % 7 + 1;
        if (++expected.day > DaysInMonth(expected.year, expected.month)) {
            expected.day = 1;
            if (++expected.month > 12) {
                expected.month = 1;
                ++expected.year;
            }
        }
    }
    EXPECT_EQ(expected, (CivilDateTime{kMaxYear + 1, 1, 1}));
}

TEST(Dates, SecondsAreRoundedAndMayCarryIntoTheNextDay) {
    constexpr double kSecond = 1.0 / 86400;
    EXPECT_EQ(FromAutomationDate(10 + 0.4 * kSecond), (CivilDateTime{1900, 1, 9}));
    EXPECT_EQ(FromAutomationDate(10 + 0.6 * kSecond), (CivilDateTime{1900, 1, 9, 0, 0, 1}));
    EXPECT_EQ(FromAutomationDate(11 - 0.4 * kSecond), (CivilDateTime{1900, 1, 10}));
    EXPECT_EQ(FromAutomationDate(-2 + 0.4 * kSecond), (CivilDateTime{1899, 12, 30}));  // 29 December, last half second
}

TEST(Dates, WhatIsNoDateIsRefused) {
    for (const double bad : {-657435.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::quiet_NaN(),
                             2958465.999999999 /* rounds up into the year 10000 */}) {
        EXPECT_THROW(FromAutomationDate(bad), std::out_of_range) << bad;
    }
}

TEST(Dates, AddIntervalByUnit) {
    const CivilDateTime start{2024, 1, 31, 23, 30, 15};
    const struct {
        const wchar_t* unit;
        int count;
        CivilDateTime sum;
    } cases[] = {
        {L"yyyy", 1, {2025, 1, 31, 23, 30, 15}},  {L"q", -1, {2023, 10, 31, 23, 30, 15}},
        {L"m", 1, {2024, 2, 29, 23, 30, 15}},     {L"m", 13, {2025, 2, 28, 23, 30, 15}},
        {L"M", -2, {2023, 11, 30, 23, 30, 15}},   {L"d", 1, {2024, 2, 1, 23, 30, 15}},
        {L"y", -31, {2023, 12, 31, 23, 30, 15}},  {L"ww", 2, {2024, 2, 14, 23, 30, 15}},
        {L"w", 2, {2024, 2, 14, 23, 30, 15}},     {L"h", 1, {2024, 2, 1, 0, 30, 15}},
        {L"n", -1440, {2024, 1, 30, 23, 30, 15}}, {L"s", 1785, {2024, 2, 1, 0, 0, 0}},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(AddInterval(each.unit, each.count, start), each.sum) << each.count;
    }
    EXPECT_EQ(AddInterval(L"s", -1, CivilDateTime{}), (CivilDateTime{1899, 12, 29, 23, 59, 59}));
    EXPECT_EQ(AddInterval(L"yyyy", 1, {2024, 2, 29}), (CivilDateTime{2025, 2, 28}));
}

TEST(Dates, AddIntervalRefusesWhatHasNoAnswer) {
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
    EXPECT_EQ(FormatTimestamp12({2014, 3, 5, 14, 7, 9}), L"2014-03-05 02:07:09 PM");
    EXPECT_EQ(FormatTimestamp12({2014, 3, 5, 0, 7, 9}), L"2014-03-05 12:07:09 AM");
    EXPECT_EQ(FormatTimestamp12({2014, 3, 5, 12, 0, 0}), L"2014-03-05 12:00:00 PM");
    EXPECT_EQ(FormatTimestamp12({2014, 3, 5, 11, 59, 59}), L"2014-03-05 11:59:59 AM");
}

}  // namespace v5
