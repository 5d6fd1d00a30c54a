#pragma once

#include "tonebridge/DeviceLayer.h"

namespace tonebridge {

// Connects to the sound server through cubeb; null where none answers.
std::unique_ptr<DeviceLayer> ConnectCubeb();

} // namespace tonebridge
