// The automation run-time's pseudo-random numbers, bit for bit: other programs of the product scramble with them.
#pragma once

#include <cstdint>

namespace v5 {

class RandomNumbers {
  public:
    // Restarts the generator from a negative number: from the bits of the single, the low 24 plus the top 8. Zero,
    // also negative zero, is not negative and leaves the generator as it is, as in the run-time.
    void Reseed(float negative);

    // The next number, a multiple of 2^-24 from 0 to below 1.
    float Next();

    // What the run-time's Rnd(number) answers: a negative number reseeds first, zero repeats the last number, a
    // positive number gives the next one.
    float Rnd(float number);

  private:
    std::uint32_t mState = 0x50000;  // where the run-time starts in every process
};

}  // namespace v5
