// Calendar dates and automation dates (days since 30 December 1899 as a double).
#pragma once

namespace v5 {

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

}  // namespace v5
