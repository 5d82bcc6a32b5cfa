#include "security/Scrambler.h"

#include <array>
#include <cmath>

#include "security/RandomNumbers.h"

namespace v5 {

namespace {

// Octal digits of a 32-bit integer; a negative one has those of its two's complement.
class OctalDigits {
  public:
    explicit OctalDigits(std::int32_t value) {
        auto bits = static_cast<std::uint32_t>(value);
        do {
            mDigits[--mFirst] = static_cast<wchar_t>(L'0' + (bits & 7));
            bits >>= 3;
        } while (bits != 0);
    }
    ~OctalDigits() { Wipe(mDigits.data(), mDigits.size()); }
    OctalDigits(const OctalDigits&) = delete;
    OctalDigits& operator=(const OctalDigits&) = delete;

    // Drops the first digit and moves the last one to the front, when there are 3 or more.
    void Twist() {
        if (mDigits.size() - mFirst >= 3) {
            const wchar_t last = mDigits.back();
            for (size_t i = mDigits.size() - 1; i > mFirst + 1; --i) {
                mDigits[i] = mDigits[i - 1];
            }
            mDigits[++mFirst] = last;
        }
    }

    std::wstring_view View() const { return {mDigits.data() + mFirst, mDigits.size() - mFirst}; }

  private:
    std::array<wchar_t, 11> mDigits{};  // 32 bits
    size_t mFirst = mDigits.size();
};

SecretText FitToKey(std::wstring_view typed, std::wstring_view key) {
    SecretText text(typed.substr(0, kScrambledCharacters));
    if (text.Size() < key.size()) {
        text.Append(key.substr(text.Size()));  // as many of the key's last characters as are missing
    }
    return text;
}

// One piece of digits for every pair of neighbours. Both factors are 16-bit integers: the square needs 32 bits, and
// the product keeps its low 16 (only codes of double-byte code pages are large enough to lose any).
SecretText DigitsOfPairs(std::wstring_view text, const CodePage& codePage) {
    SecretText digits;
    std::int32_t previous = codePage.CodeOf(text.front());
    for (const wchar_t c : text.substr(1)) {
        const std::int32_t current = codePage.CodeOf(c);
        OctalDigits octal((previous * previous) ^ static_cast<std::int16_t>(current * 103));
        octal.Twist();
        digits.Append(octal.View());
        previous = current;
    }
    return digits;
}

float NumberOf(std::wstring_view digits) {
    float number = 0;
    for (const wchar_t c : digits) {
        number = number * 10 + static_cast<float>(c - L'0');
    }
    return number;
}

// Inserts an 8 or a 9 at a random place, at least once and on average three times.
void InsertDecoys(SecretText& digits) {
    RandomNumbers random;
    random.Rnd(-NumberOf(digits.View().substr(0, 6)));  // at most 777777: exact in a single
    do {
        const double place = static_cast<double>(random.Next()) * static_cast<double>(digits.Size());
        const auto index = static_cast<size_t>(std::nearbyint(place + 1)) - 1;  // halves to even, counted from 1
        digits.Insert(index, random.Next() >= 0.5f ? L"8" : L"9");
    } while (static_cast<double>(random.Next()) < 0.7);
}

}  // namespace

SecretText Scramble(std::wstring_view typed, std::wstring_view key, const CodePage& codePage) {
    const SecretText text = FitToKey(typed, key);
    SecretText digits = DigitsOfPairs(text.View(), codePage);
    InsertDecoys(digits);
    return digits;
}

}  // namespace v5
