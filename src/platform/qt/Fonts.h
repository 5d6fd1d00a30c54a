#pragma once

#include <QFont>

namespace larkspool {

class Label;
class Window;

// The first installed of the fonts that suit the windows, at the size wished for.
QFont LargestFont();

// The given font, made smaller until every caption in the window fits its control.
QFont FittingFont(const Window& window, QFont font);

// How wide a label may be drawn: its own width, or less where another control stands in its way.
int RoomForLabel(const Window& window, const Label& label);

} // namespace larkspool
