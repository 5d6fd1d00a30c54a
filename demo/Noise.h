#pragma once

#include "demo/Fft.h"

#include <cstdint>

namespace larkspool::demo {

// Scrambles its arguments into an even spread of 64 bits, always the same for the same arguments.
std::uint64_t Scramble(std::uint64_t a, std::uint64_t b = 0, std::uint64_t c = 0);

// Scramble's bits as a number from 0 up to, not including, 1.
double Fraction(std::uint64_t bits);

// A cheap source of nearly Gaussian noise; equal seeds give equal noise.
class Noise {
  public:
    explicit Noise(std::uint64_t seed) : state(seed | 1) {}

    // Mean 0, variance 1.
    float Next() {
        const std::uint64_t bits = Bits();
        const auto sum = static_cast<float>((bits & 0xFFFF) + ((bits >> 16) & 0xFFFF) +
                                            ((bits >> 32) & 0xFFFF) + (bits >> 48));
        return (sum - 131070.0F) * (1.0F / 37837.0F);
    }

    // Mean power 1.
    Sample NextComplex() {
        constexpr float Half = 0.70710678F;
        const float real = Next();
        return {real * Half, Next() * Half};
    }

    // Even from 0 up to, not including, 1.
    double NextEven() { return Fraction(Bits()); }

  private:
    std::uint64_t Bits() {
        state ^= state >> 12;
        state ^= state << 25;
        state ^= state >> 27;
        return state * 0x2545F4914F6CDD1DU;
    }

    std::uint64_t state;
};

} // namespace larkspool::demo
