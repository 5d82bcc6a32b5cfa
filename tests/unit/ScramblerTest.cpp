#include "security/Scrambler.h"

#include <gtest/gtest.h>

#include <set>

#include "Latin1.h"
#include "security/RandomNumbers.h"

namespace v5 {

namespace {

constexpr std::wstring_view kKey = L"7Q%-k#";

std::wstring Digits(std::wstring_view typed) {
    return std::wstring(Scramble(typed, kKey, Latin1()).View());
}

std::wstring WithoutDecoys(std::wstring digits) {
    std::erase_if(digits, [](wchar_t c) { return c == L'8' || c == L'9'; });
    return digits;
}

}  // namespace

TEST(Scrambler, DigitsOfPairsByHand) {
    // "AB" becomes "AB%-k#". 65*65 xor 66*103 = 4225 xor 6798 = 2575 (octal 5017) -> 701; 66*66 xor 37*103 = 4356 xor
    // 3811 = 8167 (17747) -> 7774; 37*37 xor 45*103 = 1369 xor 4635 = 5954 (13502) -> 2350; 45*45 xor 107*103 =
    // 2025 xor 11021 = 11492 (26344) -> 4634; 107*107 xor 35*103 = 11449 xor 3605 = 8876 (21254) -> 4125.
    EXPECT_EQ(WithoutDecoys(Digits(L"AB")), L"7017774235046344125");
    // Fewer than 3 octal digits stay: 1*1 xor 0 = 1.
    EXPECT_EQ(WithoutDecoys(Digits({L"\x01\x00\x00\x00\x00\x00", 6})), L"10000");
}

TEST(Scrambler, WhichCharactersCount) {
    EXPECT_EQ(Digits(L""), Digits(kKey)) << "an empty text becomes the whole key";
    EXPECT_EQ(Digits(L"abc"), Digits(L"abc-k#"));
    EXPECT_EQ(Digits(L"abcdefghijklX"), Digits(L"abcdefghijklY"));
    EXPECT_NE(Digits(L"abcdefghijkX"), Digits(L"abcdefghijkY"));
    EXPECT_NE(Digits(L"Secret"), Digits(L"secret"));
}

TEST(Scrambler, ADoubleByteCodeKeepsTheLow16BitsOfItsProduct) {
    struct DoubleByte : CodePage {
        std::int16_t CodeOf(wchar_t) const override { return -32000; }
    };
    // -32000 squared = 1024000000 = &H3D090000; -3296000 keeps its low bits &HB500, which as a 16-bit integer
    // are -19200 (&HFFFFB500): the XOR is &HC2F6B500, octal 30275532400, and so 0027553240 for each of the five pairs.
    const SecretText digits = Scramble(L"abcdef", kKey, DoubleByte());
    std::wstring expected;
    for (int pair = 0; pair < 5; ++pair) {
        expected += L"0027553240";
    }
    EXPECT_EQ(WithoutDecoys(std::wstring(digits.View())), expected);
}

TEST(RandomNumbers, ReseedFollowsTheRunTime) {
    // -1 is the single &HBF800000: &H800000 + &HBF = 8388799, and one step of the generator.
    RandomNumbers random;
    EXPECT_EQ(random.Rnd(-1), static_cast<float>((8388799ULL * 1140671485 + 12820163) % 16777216) / 16777216);
    const float next = random.Next();
    EXPECT_EQ(random.Rnd(0), next);
    EXPECT_EQ(random.Rnd(-0.0f), next) << "negative zero is not negative";
    EXPECT_NE(random.Rnd(1), next);
}

TEST(SecretText, WipesItsCharacters) {
    SecretText secret(L"abcdef");
    const wchar_t* const buffer = secret.View().data();
    SecretText moved = std::move(secret);
    EXPECT_EQ(moved.View().data(), buffer) << "moving leaves no second copy";
    moved.Insert(2, L"XY");
    EXPECT_EQ(moved.View(), L"abXYcdef");
    const wchar_t* const grown = moved.View().data();
    const size_t length = moved.Size();
    moved.Clear();  // keeps its buffer, now blank
    EXPECT_EQ(std::wstring(grown, length), std::wstring(length, L'\0'));
}

}  // namespace v5
