#pragma once

#include <cstdint>
#include <string>

namespace larkspool {

// A sound device, as the sound library describes it.
struct SoundDeviceClass {
    std::uint32_t id = 0;
    std::uint32_t inputID = 0;
    std::uint32_t outputID = 0;
    std::uint32_t numInputChannels = 0;  // 0: no input
    std::uint32_t numOutputChannels = 0; // 0: no output
    std::string name;                    // for the user
    std::uint32_t variableGain = 0;      // stored only
};

} // namespace larkspool
