#include "tonebridge/CubebDevices.h"

namespace tonebridge {

DeviceLayerFactory CubebFactory() {
    return [] { return nullptr; };
}

} // namespace tonebridge
