#include "platform/Random.h"

namespace larkspool {

Random::Random() : engine(std::random_device{}()) {}

std::int64_t Random::InRange(std::int64_t low, std::int64_t high) {
    if (low >= high) {
        return low;
    }
    return std::uniform_int_distribution<std::int64_t>(low, high)(engine);
}

} // namespace larkspool
