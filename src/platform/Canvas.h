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

    // The same where nothing has changed but this: the picture that is painted has moved down by
    // one row and has a new one at its top. Costs less where the screen shows it scaled.
    void InvalidateRow() const { Notify(Aspect::PictureRow); }

    bool coversItself = false; // paints or clears all of itself, so that nothing is painted beneath
    std::function<bool(int x, int y)> mouseDown; // points from the canvas's corner
};

} // namespace larkspool
