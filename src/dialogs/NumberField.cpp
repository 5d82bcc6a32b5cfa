#include "dialogs/NumberField.h"

#include <algorithm>

#include "base/Text.h"

namespace v5 {

namespace {

constexpr wchar_t kBackspace = 8;
constexpr size_t kTwoDigits = 2;

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

FieldText Erased(FieldText field) {
    if (field.start == field.end && field.start > 0) {
        --field.start;
    }
    field.text.erase(field.start, field.end - field.start);
    field.end = field.start;
    return field;
}

// `field` with the digit in place of the selection; the caret stands behind the digit.
FieldText WithDigit(FieldText field, wchar_t digit) {
    field.text.replace(field.start, field.end - field.start, 1, digit);
    field.end = ++field.start;
    return field;
}

FieldText WithoutLeadingZeros(FieldText field) {
    const size_t zeros = std::min(field.text.find_first_not_of(L'0'), field.text.size() - 1);
    field.text.erase(0, zeros);
    field.start = field.end = field.start - std::min(field.start, zeros);
    return field;
}

}  // namespace

std::optional<int> NumberInRange(std::wstring_view text, NumberRange range) {
    constexpr size_t kMostDigits = 6;  // far more than any field, far fewer than an int
    if (text.empty() || text.size() > kMostDigits || !std::all_of(text.begin(), text.end(), IsDigit)) {
        return std::nullopt;
    }
    int number = 0;
    for (const wchar_t c : text) {
        number = number * 10 + static_cast<int>(c - L'0');
    }
    return number >= range.lowest && number <= range.highest ? std::optional(number) : std::nullopt;
}

FieldText TypeIntoTwoDigitField(const FieldText& field, wchar_t key, NumberRange range) {
    if (key == kBackspace) {
        return Erased(field);
    }
    if (!IsDigit(key)) {
        return field;
    }
    const FieldText typed = WithDigit(field, key);
    if (typed.text.size() > kTwoDigits || !NumberInRange(typed.text, range)) {
        return field;
    }
    return WithoutLeadingZeros(typed);
}

NumberField::NumberField(NumberRange range, int value, size_t digits) : mRange(range), mDigits(digits) {
    SetValue(value);
}

int NumberField::Value() const {
    return NumberInRange(mText, mRange).value_or(mSettled);
}

void NumberField::SetValue(int value) {
    mSettled = value;
    mText = ZeroPadded(value, mDigits);
}

void NumberField::StepAround(bool up) {
    const int value = Value();
    if (up) {
        SetValue(value == mRange.highest ? mRange.lowest : value + 1);
    } else {
        SetValue(value == mRange.lowest ? mRange.highest : value - 1);
    }
}

}  // namespace v5
