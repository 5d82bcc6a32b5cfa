// The hour, minute and AM/PM fields of the date and the time dialog; they are all that the time dialog knows.
#pragma once

#include <string>
#include <string_view>

#include "base/Dates.h"
#include "dialogs/NumberField.h"

namespace v5 {

// `caption` without its spans from "{{" to the next "}}" after it, markers included; a "{{" without a later "}}" stays.
std::wstring FilterCaption(std::wstring_view caption);

struct TimeDialogSettings {
    std::wstring Title;            // the window's caption
    double DateTimeValue = 0.0;    // automation date; its time of day is shown at first
    bool Use24HourFormat = false;  // hours 0 to 23 without AM/PM field; the user can change it
    bool AllowUserToCancel = true;
};

enum class TimePart { Hour, Minute, AmPm };

class TimeFields {
  public:
    // Fields that show `hour` (0 to 23) and `minute` (0 to 59) on a 24-hour or a 12-hour clock. `am` and `pm`, not
    // empty, are the texts of the AM/PM field.
    TimeFields(int hour, int minute, bool use24Hour, std::wstring_view am = L"AM", std::wstring_view pm = L"PM");

    // The fields of the time dialog. Throws std::out_of_range when the initial time is no automation date.
    explicit TimeFields(const TimeDialogSettings& settings);

    bool Use24Hour() const { return mUse24Hour; }

    // Shows the same time on the other clock; nothing changes when that clock is shown already.
    void SetUse24Hour(bool use24Hour);

    // The time that the fields stand for, hour 0 to 23, minute 0 to 59. A field that holds no number of its range
    // counts as the number that it last settled on; an hour of 0 on the 12-hour clock is 12.
    int Hour() const;
    int Minute() const { return mMinute.Value(); }

    // The automation date of the time of day, on 30 December 1899.
    double DateTimeValue() const;

    // What a field shows, and the range and position of its up-down control (AM/PM: AM is 0, PM is 1).
    std::wstring_view Text(TimePart part) const;
    NumberRange Range(TimePart part) const;
    int Position(TimePart part) const;

    // Takes the text that the user has left in the hour or minute field so far.
    void SetText(TimePart part, std::wstring_view text);

    // A character typed into a field that looks like `field`; gives what the field holds after it. In the AM/PM field
    // the first letters of the two texts choose between them, in any case.
    FieldText Type(TimePart part, const FieldText& field, wchar_t key);

    // One step of a field's up-down control. Hours and minutes go around; an hour step between 11 and 12 on the
    // 12-hour clock also flips the AM/PM field, as does every step of that field.
    void Step(TimePart part, bool up);

    // The user leaves a field: it shows its number properly (minutes with two digits).
    void Leave(TimePart part);

  private:
    NumberField& Field(TimePart part) { return part == TimePart::Hour ? mHour : mMinute; }
    const NumberField& Field(TimePart part) const { return part == TimePart::Hour ? mHour : mMinute; }
    int ShownHour() const;
    void StepHour(bool up);

    TimeFields(const CivilDateTime& time, bool use24Hour);

    bool mUse24Hour;
    bool mIsPm;
    std::wstring mAm;
    std::wstring mPm;
    NumberField mHour;
    NumberField mMinute;
};

}  // namespace v5
