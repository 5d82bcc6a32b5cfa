// The password scrambler: typed text to decimal digits. It hides a password from a casual reader of the database; it
// is not encryption, and whoever has the key and the generator can search for a text with the same digits.
#pragma once

#include <cstdint>
#include <string_view>

#include "security/SecretText.h"

namespace v5 {

// The character codes of the system's ANSI code page: a port, because the code page belongs to the machine.
class AnsiCodes {
  public:
    virtual ~AnsiCodes() = default;

    // The code of a character as a 16-bit integer: 0 to 255, and in a double-byte code page lead byte times 256 plus
    // trail byte, which is negative. A character outside the code page gets the code of its substitute ("?").
    virtual std::int16_t AnsiCode(wchar_t character) const = 0;
};

inline constexpr size_t kScramblerKeyLength = 6;
inline constexpr size_t kScrambledCharacters = 12;  // later characters of a typed text do not count

// The scrambled form of `typed`: decimal digits only, at least one. The same text, key (kScramblerKeyLength
// characters) and code page always give the same digits.
SecretText Scramble(std::wstring_view typed, std::wstring_view key, const AnsiCodes& codePage);

}  // namespace v5
