#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace larkspool {

// An owned image, initially black. Pixels are 0xffRRGGBB, row after row from the top, without gaps.
class Picture {
  public:
    // A size below 0 counts as 0.
    Picture(int columns, int rows);

    int Width() const { return width; }
    int Height() const { return height; }
    std::span<std::uint32_t> Pixels() { return std::span(store).subspan(start, Size()); }
    std::span<const std::uint32_t> Pixels() const {
        return std::span(store).subspan(start, Size());
    }
    // Empty for a row outside the picture.
    std::span<std::uint32_t> Row(int y);
    std::span<const std::uint32_t> Row(int y) const;

    // Moves all rows to higher y. The rows at the top keep their pixels.
    void ScrollDown(int rows);

  private:
    bool Holds(int x, int y) const { return x >= 0 && x < width && y >= 0 && y < height; }
    std::size_t Index(int x, int y) const;
    void MakeRoom(std::size_t wanted); // pixels above the picture
    std::size_t Size() const { return Index(0, height); }

    int width = 0;
    int height = 0;
    // The picture is a part of the store: scrolling moves its start, and moves its pixels only
    // when no room is left above them.
    std::vector<std::uint32_t> store;
    std::size_t start = 0;
};

} // namespace larkspool
