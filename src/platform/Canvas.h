#pragma once

#include "platform/Control.h"
#include "platform/Graphics.h"

namespace larkspool {

// A rectangle that the program paints itself.
class Canvas : public Control {
  public:
    // Raised by the view when the rectangle has to be drawn.
    virtual void Event_Paint(Graphics& g) = 0;

    // Asks for a paint event, soon; several requests may end in one.
    void Invalidate() const { Notify(Aspect::Picture); }

    // The same when the only change is that the painted picture has moved down by one row and has
    // a new row at its top. Costs less if the screen shows it scaled.
    void InvalidateRow() const { Notify(Aspect::PictureRow); }

    bool coversItself = false; // paints or clears all of itself, so that nothing is painted beneath
    std::function<bool(int x, int y)> mouseDown; // points from the canvas's corner
};

} // namespace larkspool
