// The hour, minute and AM/PM fields of the date and the time dialog.
#pragma once

#include <string>
#include <string_view>

#include "dialogs/NumberField.h"

namespace v5 {

enum class TimePart { Hour, Minute, AmPm };

class TimeFields {
  public:
    // Fields that show `hour` (0 to 23) and `minute` (0 to 59) on a 24-hour or a 12-hour clock. `am` and `pm`, not
    // empty, are the texts of the AM/PM field.
    TimeFields(int hour, int minute, bool use24Hour, std::wstring_view am = L"AM", std::wstring_view pm = L"PM");

    bool Use24Hour() const { return mUse24Hour; }

    // Shows the same time on the other clock.
    void SetUse24Hour(bool use24Hour);

    // The time that the fields stand for, hour 0 to 23, minute 0 to 59. A field that holds no number of its range
    // counts as the number that it last settled on; an hour of 0 on the 12-hour clock is 12.
    int Hour() const;
    int Minute() const { return mMinute.Value(); }

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

    bool mUse24Hour;
    bool mIsPm;
    std::wstring mAm;
    std::wstring mPm;
    NumberField mHour;
    NumberField mMinute;
};

}  // namespace v5
