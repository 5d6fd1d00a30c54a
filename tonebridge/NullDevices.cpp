#include "tonebridge/CubebDevices.h"

namespace tonebridge {

std::unique_ptr<DeviceLayer> ConnectCubeb() { return nullptr; }

} // namespace tonebridge
