// The calendar against the run-time's own conversions, for thousands of values.
#include <windows.h>
// after windows.h, which it needs:
#include <oleauto.h>

#include <gtest/gtest.h>

#include <cmath>

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

}  // namespace v5
