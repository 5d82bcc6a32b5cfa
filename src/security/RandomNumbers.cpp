#include "security/RandomNumbers.h"

#include <bit>

namespace v5 {

namespace {

// A linear congruential generator modulo 2^24; the constants are the run-time's.
constexpr std::uint32_t kMultiplier = 1140671485;
constexpr std::uint32_t kIncrement = 12820163;
constexpr std::uint32_t kModulusMask = 0xFFFFFF;

float Fraction(std::uint32_t state) {
    return static_cast<float>(state) / 16777216.0f;
}

}  // namespace

void RandomNumbers::Reseed(float negative) {
    if (negative < 0) {
        const auto bits = std::bit_cast<std::uint32_t>(negative);
        mState = ((bits & kModulusMask) + (bits >> 24)) & kModulusMask;
    }
}

float RandomNumbers::Next() {
    mState = (mState * kMultiplier + kIncrement) & kModulusMask;
    return Fraction(mState);
}

float RandomNumbers::Rnd(float number) {
    if (number == 0) {
        return Fraction(mState);
    }
    Reseed(number);
    return Next();
}

}  // namespace v5
