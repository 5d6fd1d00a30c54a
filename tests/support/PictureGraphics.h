#pragma once

#include "platform/Graphics.h"
#include "platform/Picture.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace larkspool {

// Of a pixel inside the picture.
inline Color PixelOf(const Picture& picture, int x, int y) {
    const std::uint32_t pixel = picture.Row(y)[static_cast<std::size_t>(x)];
    return {static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
            static_cast<std::uint8_t>(pixel)};
}

// Paints into a picture, pixel by pixel.
class PictureGraphics final : public Graphics {
  public:
    static constexpr Color Ground = {4, 5, 6};

    PictureGraphics(int width, int height) : paper(width, height) { FillRect(0, 0, width, height); }

    int Width() const override { return paper.Width(); }
    int Height() const override { return paper.Height(); }
    void Clear(int x, int y, int width, int height) override {
        const Color kept = std::exchange(pen, Ground);
        FillRect(x, y, width, height);
        pen = kept;
    }
    void SetForeColor(Color color) override { pen = color; }
    void FillRect(double x, double y, double width, double height) override {
        for (auto row = std::lround(y); row < std::lround(y + height); ++row) {
            for (auto column = std::lround(x); column < std::lround(x + width); ++column) {
                Put(column, row, pen);
            }
        }
    }
    void DrawPicture(const Picture& picture, int x, int y) override {
        DrawPicture(picture, x, y, picture.Width(), picture.Height());
    }
    void DrawPicture(const Picture& picture, int x, int y, int width, int height) override {
        for (int i = 0; i < width * height; ++i) {
            const int column = i % width;
            const int row = i / width;
            Put(x + column, y + row,
                PixelOf(picture, column * picture.Width() / width,
                        row * picture.Height() / height));
        }
    }

    Picture paper;

  private:
    void Put(long x, long y, Color color) {
        if (x >= 0 && x < paper.Width() && y >= 0 && y < paper.Height()) {
            paper.Row(static_cast<int>(y))[static_cast<std::size_t>(x)] = color.Packed();
        }
    }

    Color pen = {1, 2, 3}; // which nobody else paints with
};

} // namespace larkspool
