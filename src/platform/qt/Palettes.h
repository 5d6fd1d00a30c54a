#pragma once

#include <QPalette>

namespace larkspool {

QPalette LightPalette();
QPalette DarkPalette();

// Whether a palette puts light text on a dark ground.
bool IsDark(const QPalette& palette);

} // namespace larkspool
