#include "platform/Picture.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace larkspool {

Picture::Picture(int columns, int rows)
    : width(std::max(columns, 0)), height(std::max(rows, 0)),
      pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Color{}.Packed()) {
}

std::size_t Picture::Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

std::span<std::uint32_t> Picture::Row(int y) {
    if (!Holds(0, y)) {
        return {};
    }
    return Pixels().subspan(Index(0, y), static_cast<std::size_t>(width));
}

std::span<const std::uint32_t> Picture::Row(int y) const {
    if (!Holds(0, y)) {
        return {};
    }
    return Pixels().subspan(Index(0, y), static_cast<std::size_t>(width));
}

void Picture::SetPixel(int x, int y, Color color) {
    if (Holds(x, y)) {
        pixels[Index(x, y)] = color.Packed();
    }
}

Color Picture::Pixel(int x, int y) const {
    return Holds(x, y) ? Color::FromPacked(pixels[Index(x, y)]) : Color{};
}

void Picture::ScrollDown(int rows) {
    if (rows <= 0 || rows >= height || width == 0) {
        return;
    }
    const std::size_t shift = Index(0, rows);
    std::memmove(pixels.data() + shift, pixels.data(),
                 (pixels.size() - shift) * sizeof(std::uint32_t));
}

} // namespace larkspool
