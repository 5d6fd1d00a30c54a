#pragma once

namespace larkspool {

// Teaches Qt to tell assistive technology what it can't know by itself: the value of a slider
// or a meter with its unit, and that a canvas is one.
void InstallAccessibility();

} // namespace larkspool
