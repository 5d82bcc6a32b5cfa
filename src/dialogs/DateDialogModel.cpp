#include "dialogs/DateDialogModel.h"

#include <algorithm>
#include <stdexcept>

namespace v5 {

namespace {

constexpr NumberRange kYears{kMinYear, kMaxYear};
constexpr size_t kFullYearDigits = 4;

bool StartsWithoutDate(const DateDialogSettings& settings) {
    return settings.initial == kNoDate && !settings.dateCannotBeNull;
}

CivilDateTime InitialTime(const DateDialogSettings& settings, const CivilDateTime& now) {
    return settings.initial == 0.0 || StartsWithoutDate(settings) ? now : FromAutomationDate(settings.initial);
}

CivilDateTime Midnight(const CivilDateTime& time) {
    return {time.year, time.month, time.day};
}

TimeFields InitialFields(const DateDialogSettings& settings, const CivilDateTime& time) {
    return {time.hour, settings.getMinutesAlso ? time.minute : 0, settings.use24HourFormat};
}

}  // namespace

DateDialogModel::DateDialogModel(const DateDialogSettings& settings, const CivilDateTime& now)
    : showsTime_(!settings.useDateOnly),
      showsMinutes_(!settings.useDateOnly && settings.getMinutesAlso),
      showsNoDate_(!settings.dateCannotBeNull),
      noDate_(StartsWithoutDate(settings)),
      today_(Midnight(now)),
      shown_(Midnight(InitialTime(settings, now))),
      grid_(shown_.year, shown_.month),
      year_(kYears, shown_.year, 1),
      time_(InitialFields(settings, InitialTime(settings, now))) {}

bool DateDialogModel::IsToday(int cell) const {
    return today_.year == shown_.year && today_.month == shown_.month && today_.day == grid_.DayAt(cell);
}

void DateDialogModel::Show(int year, int month, int day) {
    grid_ = MonthGrid(year, month);
    shown_ = {year, month, std::min(day, grid_.LastDay())};
    if (year_.Value() != year) {
        year_.SetValue(year);
    }
}

void DateDialogModel::ChooseCell(int cell) {
    if (grid_.DayAt(cell) != 0) {
        shown_.day = grid_.DayAt(cell);
    }
}

void DateDialogModel::ChooseMonth(int month) {
    LeaveYear();
    Show(shown_.year, month, shown_.day);
}

void DateDialogModel::Move(std::wstring_view unit, int count) {
    LeaveYear();
    try {
        const CivilDateTime moved = AddInterval(unit, count, shown_);
        Show(moved.year, moved.month, moved.day);
    } catch (const std::out_of_range&) {
        // The calendar ends here.
    }
}

void DateDialogModel::SetYearText(std::wstring_view text) {
    year_.SetText(text);
    if (text.size() == kFullYearDigits) {
        Show(year_.Value(), shown_.month, shown_.day);
    }
}

void DateDialogModel::LeaveYear() {
    year_.Leave();
    Show(year_.Value(), shown_.month, shown_.day);
}

void DateDialogModel::StepYear(bool up) {
    LeaveYear();
    Show(std::clamp(shown_.year + (up ? 1 : -1), kYears.lowest, kYears.highest), shown_.month, shown_.day);
}

double DateDialogModel::Answer() const {
    if (noDate_) {
        return kNoDate;
    }
    CivilDateTime answer{year_.Value(), shown_.month, shown_.day};
    answer.day = std::min(answer.day, DaysInMonth(answer.year, answer.month));
    if (showsTime_) {
        answer.hour = time_.Hour();
        answer.minute = time_.Minute();
    }
    return ToAutomationDate(answer);
}

}  // namespace v5
