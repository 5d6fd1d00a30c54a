#pragma once

#include "tonebridge/DeviceLayer.h"

namespace tonebridge {

// Connects to the sound server through cubeb. After a backend has played, it is the only one tried:
// while its server restarts, another backend would take the device and keep it.
DeviceLayerFactory CubebFactory();

} // namespace tonebridge
