// The calendar against the run-time's own conversions and a script engine's date arithmetic, for thousands of values.
#include <windows.h>
// after windows.h, which it needs:
#include <oleauto.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <sstream>

#include "base/Dates.h"

namespace v5 {

TEST(DatesOracle, ConversionsAgreeWithTheRunTime) {
    constexpr double kFirst = -657434;
    constexpr double kLast = 2958465;
    for (double date = kFirst + 0.1; date < kLast; date += 137.0123456789) {
        UDATE parts{};
        ASSERT_EQ(VarUdateFromDate(date, 0, &parts), S_OK);
        const CivilDateTime time = FromAutomationDate(date);
        const CivilDateTime expected{parts.st.wYear, parts.st.wMonth,  parts.st.wDay,
                                     parts.st.wHour, parts.st.wMinute, parts.st.wSecond};
        ASSERT_EQ(time, expected) << date;
        double back = 0;
        ASSERT_EQ(VarDateFromUdate(&parts, 0, &back), S_OK);
        ASSERT_NEAR(ToAutomationDate(time), back, std::abs(back) * 1e-15) << date;
    }
}

TEST(DatesOracle, DaysWeeksAndHoursAreSumsOfAutomationDates) {
    const struct {
        const wchar_t* unit;
        double days;
    } units[] = {{L"d", 1}, {L"y", 1}, {L"w", 7}, {L"ww", 7}, {L"h", 1.0 / 24}};
    for (const auto& each : units) {
        for (int i = 0; i < 1000; ++i) {
            const double start = 50000 + i * 97 + (i * 6151 % 86400) / 86400.0;  // day 0 is never reached
            const int count = i * 4447 % 10001 - 5000;
            UDATE sum{};
            ASSERT_EQ(VarUdateFromDate(start + count * each.days, 0, &sum), S_OK);
            const CivilDateTime expected{sum.st.wYear, sum.st.wMonth,  sum.st.wDay,
                                         sum.st.wHour, sum.st.wMinute, sum.st.wSecond};
            ASSERT_EQ(AddInterval(each.unit, count, FromAutomationDate(start)), expected) << start << " " << count;
        }
    }
}

TEST(DatesOracle, DateArithmeticAgreesWithTheScriptEngine) {
    const std::string drive = V5_SOURCE_DIR[0] == '/' ? "Z:" : "";
    const std::string command = "cscript //nologo " + drive + V5_SOURCE_DIR "/tests/unit/windows/DatesOracle.vbs";
    FILE* const script = _popen(command.c_str(), "rt");
    ASSERT_NE(script, nullptr);
    int sums = 0;
    for (char buffer[256]; std::fgets(buffer, sizeof buffer, script) != nullptr; ++sums) {
        std::istringstream line(buffer);
        std::string unit;
        int count = 0, days = 0, seconds = 0;
        CivilDateTime expected;
        line >> unit >> count >> days >> seconds >> expected.year >> expected.month >> expected.day >> expected.hour >>
            expected.minute >> expected.second;
        const CivilDateTime start = FromAutomationDate(days < 0 ? days - seconds / 86400.0 : days + seconds / 86400.0);
        const CivilDateTime sum = AddInterval(std::wstring(unit.begin(), unit.end()), count, start);
        ASSERT_EQ(sum, expected) << buffer;
    }
    EXPECT_EQ(_pclose(script), 0);
    EXPECT_GT(sums, 1400);
}

}  // namespace v5
