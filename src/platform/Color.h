#pragma once

#include <cstdint>

namespace larkspool {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    // 0xffRRGGBB, opaque.
    constexpr std::uint32_t Packed() const {
        return 0xff000000U | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 |
               std::uint32_t{blue};
    }

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

} // namespace larkspool
