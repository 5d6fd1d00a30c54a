#pragma once

#include <cstdint>
#include <random>

namespace larkspool {

// Pseudo-random numbers where secrecy is not needed: masking keys, the first row.
class Random {
  public:
    // Seeded by the system.
    Random() : engine(std::random_device{}()) {}
    explicit Random(std::uint32_t seed) : engine(seed) {}

    // Both ends included; low if the range is empty.
    std::int64_t InRange(std::int64_t low, std::int64_t high) {
        return low < high ? std::uniform_int_distribution<std::int64_t>(low, high)(engine) : low;
    }

  private:
    std::mt19937 engine;
};

} // namespace larkspool
