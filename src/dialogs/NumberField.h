// A text field that holds one small number and an up-down control beside it: what its keys do, and what number it
// stands for while its text is half typed.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace v5 {

// The lowest and the highest number of a field, both included.
struct NumberRange {
    int lowest = 0;
    int highest = 0;
};

// The text of an edit control and its selection, as character positions; a bare caret has start == end.
struct FieldText {
    std::wstring text;
    size_t start = 0;
    size_t end = 0;

    bool operator==(const FieldText&) const = default;
};

// The plain decimal number that `text` spells with digits only; nullopt for an empty text, any other character or a
// number outside `range`.
std::optional<int> NumberInRange(std::wstring_view text, NumberRange range);

// What a two-digit field holds after `key` (a character, as WM_CHAR delivers it) was typed into it. Backspace removes
// the selection or the character before the caret. A digit goes in at the caret, or replaces the selection, if the
// result has at most two characters and its number lies in `range`; the field then shows that number without leading
// zeros and the caret stands behind the typed digit. Every other key leaves the field as it is.
FieldText TypeIntoTwoDigitField(const FieldText& field, wchar_t key, NumberRange range);

class NumberField {
  public:
    // `value` lies in `range`; `digits` is the least number of digits that Leave() shows, filled up with zeros.
    NumberField(NumberRange range, int value, size_t digits);

    NumberRange Range() const { return mRange; }
    const std::wstring& Text() const { return mText; }

    // The number in the text, or the last settled number while the text holds none of the range.
    int Value() const;

    // Takes what the user has typed so far, valid or not.
    void SetText(std::wstring_view text) { mText = text; }

    // Settles on `value`, which lies in the range, and shows it.
    void SetValue(int value);

    // The user leaves the field: settles on Value(), so that no invalid text stays in it.
    void Leave() { SetValue(Value()); }

    // One step of the up-down control: to the next or previous number, from one end of the range to the other.
    void StepAround(bool up);

  private:
    NumberRange mRange;
    size_t mDigits;
    int mSettled = 0;
    std::wstring mText;
};

}  // namespace v5
