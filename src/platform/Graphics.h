#pragma once

#include "platform/Color.h"
#include "platform/Picture.h"

namespace larkspool {

// What a canvas paints on, in points, clipped to the canvas. Valid during one paint event only.
class Graphics {
  public:
    virtual ~Graphics() = default;

    virtual int Width() const = 0;
    virtual int Height() const = 0;
    virtual void Clear(int x, int y, int width, int height) = 0; // the window's background shows
    virtual void SetForeColor(Color color) = 0;
    virtual void FillRect(double x, double y, double width, double height) = 0;
    virtual void DrawPicture(const Picture& picture, int x, int y) = 0;
    virtual void DrawPicture(const Picture& picture, int x, int y, int width, int height) = 0;
};

} // namespace larkspool
