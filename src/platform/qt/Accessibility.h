#pragma once

namespace larkspool {

// Makes Qt give assistive technology what Qt doesn't know: the value of a slider or a meter with
// its unit, and the role of a canvas.
void InstallAccessibility();

} // namespace larkspool
