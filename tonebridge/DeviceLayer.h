#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tonebridge {

// One side of a sound device: what it plays or what it records.
struct DeviceSide {
    std::string id;   // the sound server's id, unique on each side
    std::string name; // for people, UTF-8
    std::uint32_t channels = 0;
    std::uint32_t rate = 0; // Hz, preferred by the device
    bool isDefault = false;
};

// What an open stream calls, on the sound server's threads.
class StreamClient {
  public:
    virtual ~StreamClient() = default;
    // Fills the next frames, two samples each, left before right. Must not wait.
    virtual void RenderStereo(std::span<float> samples) = 0;
    // The device is lost. The stream renders nothing more; its owner closes it.
    virtual void StreamFailed() = 0;
};

// An output that plays until it is destroyed.
class OutputStream {
  public:
    virtual ~OutputStream() = default;
    // The current device; "" if the backend can't say.
    virtual std::string DeviceId() const = 0;
};

// A connection to a sound server. It must outlive its streams, and is used by one thread. One class
// per backend.
class DeviceLayer {
  public:
    virtual ~DeviceLayer() = default;
    virtual std::vector<DeviceSide> ListOutputs() = 0;
    virtual std::vector<DeviceSide> ListInputs() = 0;
    // Plays on this output, in stereo at this rate. Null if that fails.
    virtual std::unique_ptr<OutputStream> Open(const std::string& id, std::uint32_t rate,
                                               StreamClient& client) = 0;
};

// Connects to the sound server; null if none answers.
using DeviceLayerFactory = std::function<std::unique_ptr<DeviceLayer>()>;

} // namespace tonebridge
