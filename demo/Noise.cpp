#include "demo/Noise.h"

namespace larkspool::demo {
namespace {

std::uint64_t Mix(std::uint64_t bits) {
    bits += 0x9E3779B97F4A7C15U;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31);
}

} // namespace

std::uint64_t Scramble(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
    return Mix(Mix(Mix(a) ^ b) ^ c);
}

double Fraction(std::uint64_t bits) { return static_cast<double>(bits >> 11) * 0x1p-53; }

} // namespace larkspool::demo
