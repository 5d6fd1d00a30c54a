#include "tonebridge/DeviceList.h"

#include <algorithm>
#include <cstring>

namespace tonebridge {

DeviceList::DeviceList(std::vector<DeviceSide> outputs, const std::vector<DeviceSide>& inputs) {
    std::stable_partition(outputs.begin(), outputs.end(),
                          [](const DeviceSide& output) { return output.isDefault; });
    std::uint32_t number = 0;
    for (const DeviceSide& output : outputs) {
        if (output.channels > 0) {
            devices.push_back({output.id, output.name, 0, output.channels, Device::None, number++});
        }
    }
    number = 0;
    for (const DeviceSide& input : inputs) {
        if (input.channels > 0) {
            AddInput(input, number++);
        }
    }
}

void DeviceList::AddInput(const DeviceSide& input, std::uint32_t number) {
    const auto sameDevice = std::ranges::find_if(devices, [&](const Device& device) {
        return device.id == input.id && device.inputNumber == Device::None;
    });
    if (sameDevice == devices.end()) {
        devices.push_back({input.id, input.name, input.channels, 0, number, Device::None});
        return;
    }
    sameDevice->inputChannels = input.channels;
    sameDevice->inputNumber = number;
}

std::optional<Device> DeviceList::Output(std::int64_t number) const {
    const auto found = std::ranges::find_if(devices, [&](const Device& device) {
        return device.outputNumber != Device::None && device.outputNumber == number;
    });
    return found == devices.end() ? std::nullopt : std::optional(*found);
}

void DeviceList::Describe(std::int64_t index, std::span<std::byte> info,
                          std::span<std::byte> name) const {
    if (index < 0 || index >= static_cast<std::int64_t>(devices.size())) {
        return;
    }
    const Device& device = devices[static_cast<std::size_t>(index)];
    const std::array<std::uint32_t, 6> fields{static_cast<std::uint32_t>(index),
                                              device.inputChannels,
                                              device.outputChannels,
                                              device.inputNumber,
                                              device.outputNumber,
                                              device.outputChannels > 0 ? 1U : 0U};
    std::memcpy(info.data(), fields.data(), sizeof fields);
    const std::string text = CutUtf8(device.name, name.size() - 1);
    std::memcpy(name.data(), text.c_str(), text.size() + 1);
}

const DeviceSide* FindChosen(std::span<const DeviceSide> outputs, const Device& chosen) {
    const DeviceSide* found = nullptr;
    for (const DeviceSide& output : outputs) {
        if (!chosen.name.empty() && output.name == chosen.name &&
            (found == nullptr || output.id == chosen.id)) {
            found = &output;
        }
    }
    return found;
}

const DeviceSide* FindDefault(std::span<const DeviceSide> outputs) {
    const auto found = std::ranges::find_if(outputs, &DeviceSide::isDefault);
    if (found != outputs.end()) {
        return &*found;
    }
    return outputs.empty() ? nullptr : &outputs.front();
}

std::string CutUtf8(const std::string& text, std::size_t size) {
    if (text.size() <= size) {
        return text;
    }
    constexpr unsigned ContinuationMask = 0xC0;
    constexpr unsigned Continuation = 0x80;
    while (size > 0 &&
           (static_cast<unsigned char>(text[size]) & ContinuationMask) == Continuation) {
        --size;
    }
    return text.substr(0, size);
}

} // namespace tonebridge
