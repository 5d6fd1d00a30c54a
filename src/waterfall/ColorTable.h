#pragma once

#include "platform/Color.h"

#include <array>
#include <cstdint>

namespace larkspool {

// The waterfall's scale: black, blue, cyan, green, yellow, red, toward purple.
class ColorTable {
  public:
    static constexpr int Size = 1024;

    ColorTable() { MakeColorTable(); }

    const Color& operator[](int index) const { return colors[static_cast<std::size_t>(index)]; }

  private:
    void MakeColorTable();
    // Limits the index to the table and each color to 0 to 255.
    void setRgb(int index, int red, int green, int blue);

    std::array<Color, Size> colors;
};

// The color of each value that a converted bin can have, 0 to 255, for one gain and offset.
class LevelColors {
  public:
    // Looks up the level gain * (value - offset), limited to 0 to 255, at every fourth entry of the
    // scale. gain: 0.00 to 5.00; offset: 0 to 63.
    void Update(const ColorTable& scale, double gain, int offset);

    std::uint32_t operator[](std::uint8_t value) const { return pixels[value]; } // 0xffRRGGBB

  private:
    std::array<std::uint32_t, 256> pixels{};
};

} // namespace larkspool
