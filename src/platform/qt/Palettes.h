#pragma once

#include <QPalette>

namespace larkspool {

QPalette LightPalette();
QPalette DarkPalette();

// Whether a palette has light text on a dark background.
bool IsDark(const QPalette& palette);

} // namespace larkspool
