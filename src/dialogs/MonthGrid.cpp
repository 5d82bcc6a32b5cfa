#include "dialogs/MonthGrid.h"

#include "base/Dates.h"

namespace v5 {

MonthGrid::MonthGrid(int year, int month)
    : firstDayCell_(Weekday({year, month, 1}) - 1), lastDay_(DaysInMonth(year, month)) {}

int MonthGrid::DayAt(int cell) const {
    const int day = cell - firstDayCell_ + 1;
    return day >= 1 && day <= lastDay_ ? day : 0;
}

}  // namespace v5
