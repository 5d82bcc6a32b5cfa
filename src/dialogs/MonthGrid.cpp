#include "dialogs/MonthGrid.h"

#include "base/Dates.h"

namespace v5 {

MonthGrid::MonthGrid(int year, int month)
    : mFirstDayCell(Weekday({year, month, 1}) - 1), mLastDay(DaysInMonth(year, month)) {}

int MonthGrid::DayAt(int cell) const {
    const int day = cell - mFirstDayCell + 1;
    return day >= 1 && day <= mLastDay ? day : 0;
}

}  // namespace v5
