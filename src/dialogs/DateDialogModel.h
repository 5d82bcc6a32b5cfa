// What the date dialog knows and does, without its window.
#pragma once

#include <string>
#include <string_view>
#include <utility>

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
    std::wstring Title;            // the window's caption
    double DateTimeValue = 0.0;    // automation date shown at first; exactly 0 shows the present date and time
    bool Use24HourFormat = false;  // hours 0 to 23 without AM/PM field
    bool UseDateOnly = false;      // no time fields, the answer is a date at midnight
    bool GetMinutesAlso = true;    // show the minute field; else minutes are 0
    bool DateCannotBeNull = true;  // the user cannot answer "no date"
};

class DateDialogModel {
  public:
    // Throws std::out_of_range when the initial date is none (see FromAutomationDate). An initial "no date" ticks the
    // no-date box, if the user has one, over the present date and time.
    DateDialogModel(const DateDialogSettings& settings, const CivilDateTime& now);

    bool ShowsTime() const { return mShowsTime; }
    bool ShowsMinutes() const { return mShowsMinutes; }
    bool ShowsNoDate() const { return mShowsNoDate; }

    int Month() const { return mShown.month; }
    const MonthGrid& Grid() const { return mGrid; }
    int SelectedCell() const { return mGrid.CellOf(mShown.day); }
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
    // is a year of the calendar; when the field is left, what is none is replaced by the year shown.
    const std::wstring& YearText() const { return mYear.Text(); }
    NumberRange YearRange() const { return mYear.Range(); }
    void SetYearText(std::wstring_view text);
    void LeaveYear();

    // Whether a typed year was replaced, and neither this was asked nor anything chosen since: the user must see what
    // is answered.
    bool TakeCorrection() { return std::exchange(mCorrected, false); }

    void StepYear(bool up);

    TimeFields& Time() { return mTime; }
    const TimeFields& Time() const { return mTime; }

    bool NoDate() const { return mNoDate; }
    void SetNoDate(bool noDate) { mNoDate = noDate && mShowsNoDate; }

    // The answer of a dialog closed by OK: kNoDate, or the automation date and time that the fields stand for.
    double DateTimeValue() const;

  private:
    void Show(int year, int month, int day);
    void Choose(int year, int month, int day);
    void Move(std::wstring_view unit, int count);

    bool mShowsTime;
    bool mShowsMinutes;
    bool mShowsNoDate;
    bool mNoDate;
    CivilDateTime mToday;
    CivilDateTime mShown;  // at midnight
    int mChosenDay;        // as the user chose it; while a year is typed, the day shown may be an earlier one
    bool mCorrected = false;
    MonthGrid mGrid;
    NumberField mYear;
    TimeFields mTime;
};

}  // namespace v5
