// What the date dialog knows and does, without its window.
#pragma once

#include <string>
#include <string_view>

#include "base/Dates.h"
#include "dialogs/MonthGrid.h"
#include "dialogs/TimeFields.h"

namespace v5 {

// The answers that are no date that the user picked.
inline constexpr double kDateCancelled = 0.0;  // 30 December 1899
inline constexpr double kNoDate = -1.0;        // 29 December 1899

inline constexpr std::wstring_view kMonthNames[] = {L"January",   L"February", L"March",    L"April",
                                                    L"May",       L"June",     L"July",     L"August",
                                                    L"September", L"October",  L"November", L"December"};
inline constexpr std::wstring_view kWeekdayNames[] = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};

struct DateDialogSettings {
    std::wstring title;            // the window's caption
    double initial = 0.0;          // automation date shown at first; exactly 0 shows the present date and time
    bool use24HourFormat = false;  // hours 0 to 23 without AM/PM field
    bool useDateOnly = false;      // no time fields, the answer is a date at midnight
    bool getMinutesAlso = true;    // show the minute field; else minutes are 0
    bool dateCannotBeNull = true;  // the user cannot answer "no date"
};

class DateDialogModel {
  public:
    // Throws std::out_of_range when the initial date is none (see FromAutomationDate). An initial "no date" ticks the
    // no-date box, if the user has one, over the present date and time.
    DateDialogModel(const DateDialogSettings& settings, const CivilDateTime& now);

    bool ShowsTime() const { return showsTime_; }
    bool ShowsMinutes() const { return showsMinutes_; }
    bool ShowsNoDate() const { return showsNoDate_; }

    int Month() const { return shown_.month; }
    const MonthGrid& Grid() const { return grid_; }
    int SelectedCell() const { return grid_.CellOf(shown_.day); }
    bool IsToday(int cell) const;

    // Selects the day in a cell; a hidden cell changes nothing.
    void ChooseCell(int cell);

    // Shows another month (1 to 12) of the same year. Here and below, a day that the new month does not have becomes
    // its last day.
    void ChooseMonth(int month);

    // Moves the selected date by months or days, across year ends. At the ends of the calendar nothing changes.
    void MoveMonths(int count) { Move(L"m", count); }
    void MoveDays(int count) { Move(L"d", count); }

    // The year field and its up-down control, which stops at 100 and 9999. The grid follows a typed year as soon as it
    // has four digits, or when the field is left; what is no year of the calendar is then replaced by the year shown.
    const std::wstring& YearText() const { return year_.Text(); }
    NumberRange YearRange() const { return year_.Range(); }
    void SetYearText(std::wstring_view text);
    void LeaveYear();
    void StepYear(bool up);

    TimeFields& Time() { return time_; }
    const TimeFields& Time() const { return time_; }

    bool NoDate() const { return noDate_; }
    void SetNoDate(bool noDate) { noDate_ = noDate && showsNoDate_; }

    // The answer of a dialog closed by OK: kNoDate, or the automation date and time that the fields stand for.
    double Answer() const;

  private:
    void Show(int year, int month, int day);
    void Move(std::wstring_view unit, int count);

    bool showsTime_;
    bool showsMinutes_;
    bool showsNoDate_;
    bool noDate_;
    CivilDateTime today_;
    CivilDateTime shown_;  // at midnight
    MonthGrid grid_;
    NumberField year_;
    TimeFields time_;
};

}  // namespace v5
