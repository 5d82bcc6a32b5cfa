// Numeric text as automation clients understand it (their IsNumeric, CDbl, CLng and CBool).
//
// Accepted: blanks on either side, one plus and one minus sign in front or behind, "$", thousands commas, one
// decimal point, an exponent (E or D; not after "$"), parentheses for a negative number, and &H (hexadecimal) or
// &O (octal).
// The separators are those of English (United States) whatever the machine's language, so that one site file
// means the same everywhere.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace v5 {

// Whether `text` is a number that a double can hold. Empty and blank texts are not.
bool IsNumeric(std::wstring_view text);

// The value of numeric text; nullopt when it is not numeric. &H and &O texts of up to 32 bits are signed:
// "&HFFFFFFFF" is -1 ("&HFFFF" is 65535). Values too small for a double are 0.
std::optional<double> ParseNumber(std::wstring_view text);

// The value as a whole number, halves rounded to the even neighbour; nullopt when `text` is not numeric or the
// result does not fit into 32 bits.
std::optional<std::int32_t> ToLong(std::wstring_view text);

// True for numeric text other than zero and for the words "True" and "#TRUE#" in any case, false for zero, "False"
// and "#FALSE#"; nullopt for anything else.
std::optional<bool> ToBoolean(std::wstring_view text);

}  // namespace v5
