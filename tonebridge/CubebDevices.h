#pragma once

#include "tonebridge/DeviceLayer.h"

namespace tonebridge {

// Connects to the sound server through cubeb. Once a backend has played, it is
// the only one tried: where its server is restarted, another backend would take
// the device in the meantime and keep it.
DeviceLayerFactory CubebFactory();

} // namespace tonebridge
