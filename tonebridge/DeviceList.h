#pragma once

#include "tonebridge/DeviceLayer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tonebridge {

// A sound device with its two sides joined.
struct Device {
    static constexpr std::uint32_t None = 0xFFFFFFFF;

    std::string id;
    std::string name;
    std::uint32_t inputChannels = 0;
    std::uint32_t outputChannels = 0;
    std::uint32_t inputNumber = None;  // among the devices with inputs
    std::uint32_t outputNumber = None; // among the devices with outputs
};

// The devices of one scan, in the order in which the user sees them: the default output, the other
// outputs, then the inputs.
class DeviceList {
  public:
    static constexpr std::size_t RecordSize = 1024;

    DeviceList() = default;
    DeviceList(std::vector<DeviceSide> outputs, const std::vector<DeviceSide>& inputs);

    std::span<const Device> Devices() const { return devices; }
    std::optional<Device> Output(std::int64_t number) const;
    // Fills the two records of the public header.
    void Describe(std::int64_t index, std::span<std::byte> info, std::span<std::byte> name) const;

  private:
    void AddInput(const DeviceSide& input, std::uint32_t number);

    std::vector<Device> devices;
};

// The output with that device's name, and with its id if there are several; null if there is none,
// and for a device without a name.
const DeviceSide* FindChosen(std::span<const DeviceSide> outputs, const Device& chosen);
// The default output, null if there is no output.
const DeviceSide* FindDefault(std::span<const DeviceSide> outputs);

// text cut to at most size bytes, never inside a UTF-8 character.
std::string CutUtf8(const std::string& text, std::size_t size);

} // namespace tonebridge
