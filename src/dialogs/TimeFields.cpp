#include "dialogs/TimeFields.h"

#include "base/Text.h"

namespace v5 {

namespace {

constexpr int kNoon = 12;
constexpr NumberRange kMinutes{0, 59};

int HourOn12HourClock(int hour) {
    return hour % kNoon == 0 ? kNoon : hour % kNoon;
}

NumberField HourField(int hour, bool use24Hour) {
    return use24Hour ? NumberField({0, 23}, hour, 1) : NumberField({1, kNoon}, HourOn12HourClock(hour), 1);
}

}  // namespace

std::wstring FilterCaption(std::wstring_view caption) {
    constexpr std::wstring_view kOpen = L"{{";
    constexpr std::wstring_view kClose = L"}}";
    std::wstring text(caption);
    for (size_t open = text.find(kOpen); open != std::wstring::npos; open = text.find(kOpen)) {
        const size_t close = text.find(kClose, open + kOpen.size());
        if (close == std::wstring::npos) {
            break;
        }
        text.erase(open, close + kClose.size() - open);
    }
    return text;
}

TimeFields::TimeFields(int hour, int minute, bool use24Hour, std::wstring_view am, std::wstring_view pm)
    : mUse24Hour(use24Hour),
      mIsPm(hour >= kNoon),
      mAm(am),
      mPm(pm),
      mHour(HourField(hour, use24Hour)),
      mMinute(kMinutes, minute, 2) {}

TimeFields::TimeFields(const CivilDateTime& time, bool use24Hour)
    : TimeFields(time.hour, time.minute, use24Hour, FilterCaption(L"AM"), FilterCaption(L"PM")) {}

TimeFields::TimeFields(const TimeDialogSettings& settings)
    : TimeFields(FromAutomationDate(settings.DateTimeValue), settings.Use24HourFormat) {}

void TimeFields::SetUse24Hour(bool use24Hour) {
    if (use24Hour == mUse24Hour) {
        return;
    }
    const int hour = Hour();
    mUse24Hour = use24Hour;
    mIsPm = hour >= kNoon;
    mHour = HourField(hour, use24Hour);
}

// The number that the hour field stands for. Deleting the 1 of a 10 leaves "0", which on a 12-hour clock can only
// mean 12.
int TimeFields::ShownHour() const {
    return !mUse24Hour && NumberInRange(mHour.Text(), {0, 0}) ? kNoon : mHour.Value();
}

int TimeFields::Hour() const {
    return mUse24Hour ? ShownHour() : ShownHour() % kNoon + (mIsPm ? kNoon : 0);
}

double TimeFields::DateTimeValue() const {
    CivilDateTime answer;
    answer.hour = Hour();
    answer.minute = Minute();
    return ToAutomationDate(answer);
}

std::wstring_view TimeFields::Text(TimePart part) const {
    if (part == TimePart::AmPm) {
        return mIsPm ? mPm : mAm;
    }
    return Field(part).Text();
}

NumberRange TimeFields::Range(TimePart part) const {
    return part == TimePart::AmPm ? NumberRange{0, 1} : Field(part).Range();
}

int TimeFields::Position(TimePart part) const {
    if (part == TimePart::AmPm) {
        return mIsPm ? 1 : 0;
    }
    return part == TimePart::Hour ? ShownHour() : Minute();
}

void TimeFields::SetText(TimePart part, std::wstring_view text) {
    if (part != TimePart::AmPm) {
        Field(part).SetText(text);
    }
}

FieldText TimeFields::Type(TimePart part, const FieldText& field, wchar_t key) {
    if (part == TimePart::AmPm) {
        const wchar_t letter = ToUpper(key);
        if (letter == ToUpper(mAm.front()) || letter == ToUpper(mPm.front())) {
            mIsPm = letter == ToUpper(mPm.front());
        }
        const std::wstring text(Text(part));
        return {text, 0, text.size()};
    }
    FieldText typed = TypeIntoTwoDigitField(field, key, Range(part));
    SetText(part, typed.text);
    return typed;
}

void TimeFields::Step(TimePart part, bool up) {
    switch (part) {
        case TimePart::Hour:
            StepHour(up);
            break;
        case TimePart::Minute:
            mMinute.StepAround(up);
            break;
        case TimePart::AmPm:
            mIsPm = !mIsPm;
            break;
    }
}

void TimeFields::StepHour(bool up) {
    Leave(TimePart::Hour);
    mHour.StepAround(up);
    if (!mUse24Hour && mHour.Value() == (up ? kNoon : kNoon - 1)) {
        mIsPm = !mIsPm;
    }
}

void TimeFields::Leave(TimePart part) {
    if (part == TimePart::Hour) {
        mHour.SetValue(ShownHour());
    } else if (part == TimePart::Minute) {
        mMinute.Leave();
    }
}

}  // namespace v5
