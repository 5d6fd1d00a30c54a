#pragma once

#include <QFont>

namespace larkspool {

class Label;
class Window;

// The first installed font of those that suit the windows, at the preferred size.
QFont LargestFont();

// The given font, made smaller until every caption in the window fits its control.
QFont FittingFont(const Window& window, QFont font);

// All windows and boxes share one font, the largest that has fitted so far. To be called before the
// window's widgets are made: they take the font that is set then.
void FitApplicationFont(const Window& window);

// How wide a label may be drawn: its own width, or less if another control overlaps it.
int RoomForLabel(const Window& window, const Label& label);

} // namespace larkspool
