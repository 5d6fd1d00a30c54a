#include "waterfall/ColorTable.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr int EntriesPerLevel = 4;

int Ramp(double top, double into, double width) { return static_cast<int>(top * into / width); }

} // namespace

void ColorTable::MakeColorTable() {
    for (int i = 0; i < Size; ++i) {
        const double q = i / 4.0;
        if (i <= 171) {
            setRgb(i, 0, 0, Ramp(255, q, 43));
        } else if (i <= 347) {
            setRgb(i, 0, Ramp(255, q - 43, 43), 255);
        } else if (i <= 479) {
            setRgb(i, 0, 255, static_cast<int>(255 - 255 * (q - 87) / 32));
        } else if (i <= 615) {
            setRgb(i, Ramp(255, q - 120, 33), 255, 0);
        } else if (i <= 867) {
            setRgb(i, 255, static_cast<int>(255 - 255 * (q - 154) / 62), 0);
        } else {
            setRgb(i, 255, 0, Ramp(128, q - 217, 38));
        }
    }
}

void ColorTable::setRgb(int index, int red, int green, int blue) {
    const auto part = [](int value) {
        return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    };
    colors[static_cast<std::size_t>(std::clamp(index, 0, Size - 1))] = {part(red), part(green),
                                                                        part(blue)};
}

void LevelColors::Update(const ColorTable& scale, double gain, int offset) {
    for (int value = 0; value < static_cast<int>(pixels.size()); ++value) {
        const int level = std::clamp(static_cast<int>(gain * (value - offset)), 0, 255);
        pixels[static_cast<std::size_t>(value)] = scale[level * EntriesPerLevel].Packed();
    }
}

} // namespace larkspool
