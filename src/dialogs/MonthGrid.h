// The grid of day buttons of one month: six weeks of seven cells, Sunday first.
#pragma once

namespace v5 {

class MonthGrid {
  public:
    static constexpr int kDaysPerWeek = 7;
    static constexpr int kCells = 6 * kDaysPerWeek;

    // The grid of a month (1 to 12) of a year (100 to 9999).
    MonthGrid(int year, int month);

    // The cell of day 1, 0 to 6: the cell under day 1's weekday heading.
    int FirstDayCell() const { return mFirstDayCell; }

    // The month's last day, 28 to 31.
    int LastDay() const { return mLastDay; }

    // The day in a cell (0 to 41), or 0 when the cell lies before day 1 or past the last day and is hidden.
    int DayAt(int cell) const;

    // The cell of a day of this month (1 to LastDay()).
    int CellOf(int day) const { return mFirstDayCell + day - 1; }

  private:
    int mFirstDayCell;
    int mLastDay;
};

}  // namespace v5
