#include "dialogs/DateDialogModel.h"

#include <algorithm>
#include <stdexcept>

namespace v5 {

namespace {

constexpr NumberRange kYears{kMinYear, kMaxYear};

bool StartsWithoutDate(const DateDialogSettings& settings) {
    return settings.DateTimeValue == kNoDate && !settings.DateCannotBeNull;
}

CivilDateTime InitialTime(const DateDialogSettings& settings, const CivilDateTime& now) {
    return settings.DateTimeValue == 0.0 || StartsWithoutDate(settings) ? now
                                                                        : FromAutomationDate(settings.DateTimeValue);
}

CivilDateTime Midnight(const CivilDateTime& time) {
    return {time.year, time.month, time.day};
}

TimeFields InitialFields(const DateDialogSettings& settings, const CivilDateTime& time) {
    return {time.hour, settings.GetMinutesAlso ? time.minute : 0, settings.Use24HourFormat};
}

}  // namespace

DateDialogModel::DateDialogModel(const DateDialogSettings& settings, const CivilDateTime& now)
    : mShowsTime(!settings.UseDateOnly),
      mShowsMinutes(!settings.UseDateOnly && settings.GetMinutesAlso),
      mShowsNoDate(!settings.DateCannotBeNull),
      mNoDate(StartsWithoutDate(settings)),
      mToday(Midnight(now)),
      mShown(Midnight(InitialTime(settings, now))),
      mChosenDay(mShown.day),
      mGrid(mShown.year, mShown.month),
      mYear(kYears, mShown.year, 1),
      mTime(InitialFields(settings, InitialTime(settings, now))) {}

bool DateDialogModel::IsToday(int cell) const {
    return mToday.year == mShown.year && mToday.month == mShown.month && mToday.day == mGrid.DayAt(cell);
}

void DateDialogModel::Show(int year, int month, int day) {
    mGrid = MonthGrid(year, month);
    mShown = {year, month, std::min(day, mGrid.LastDay())};
    if (mYear.Value() != year) {
        mYear.SetValue(year);
    }
}

void DateDialogModel::Choose(int year, int month, int day) {
    Show(year, month, day);
    mChosenDay = mShown.day;
    mCorrected = false;  // what is shown now is the user's own choice
}

void DateDialogModel::ChooseCell(int cell) {
    if (mGrid.DayAt(cell) != 0) {
        Choose(mShown.year, mShown.month, mGrid.DayAt(cell));
    }
}

void DateDialogModel::ChooseMonth(int month) {
    LeaveYear();
    Choose(mShown.year, month, mShown.day);
}

void DateDialogModel::Move(std::wstring_view unit, int count) {
    LeaveYear();
    try {
        const CivilDateTime moved = AddInterval(unit, count, mShown);
        Choose(moved.year, moved.month, moved.day);
    } catch (const std::out_of_range&) {
        // The calendar ends here.
    }
}

void DateDialogModel::SetYearText(std::wstring_view text) {
    mYear.SetText(text);
    if (NumberInRange(text, kYears)) {
        Show(mYear.Value(), mShown.month, mChosenDay);
    }
}

void DateDialogModel::LeaveYear() {
    mCorrected |= !NumberInRange(mYear.Text(), kYears);
    mYear.SetValue(mShown.year);
    mChosenDay = mShown.day;
}

void DateDialogModel::StepYear(bool up) {
    LeaveYear();
    Choose(std::clamp(mShown.year + (up ? 1 : -1), kYears.lowest, kYears.highest), mShown.month, mShown.day);
}

double DateDialogModel::DateTimeValue() const {
    if (mNoDate) {
        return kNoDate;
    }
    CivilDateTime answer = mShown;
    if (mShowsTime) {
        answer.hour = mTime.Hour();
        answer.minute = mTime.Minute();
    }
    return ToAutomationDate(answer);
}

}  // namespace v5
