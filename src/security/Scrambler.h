// The password scrambler: typed text to decimal digits. It hides a password from a casual reader of the database; it
// is not encryption, and whoever has the key and the generator can search for a text with the same digits.
#pragma once

#include <string_view>

#include "base/CodePage.h"
#include "security/SecretText.h"

namespace v5 {

inline constexpr size_t kScramblerKeyLength = 6;
inline constexpr size_t kScrambledCharacters = 12;  // later characters of a typed text do not count

// The scrambled form of `typed`: decimal digits only, at least one. The same text, key (kScramblerKeyLength
// characters) and code page always give the same digits.
SecretText Scramble(std::wstring_view typed, std::wstring_view key, const CodePage& codePage);

}  // namespace v5
