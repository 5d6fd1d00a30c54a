#pragma once

#include "platform/MemoryBlock.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspool {

// What stands in front of the samples in an audio frame. Two byte orders meet here: the sequence
// number is little-endian, the S-meter big-endian.
struct SoundHeader {
    static constexpr std::size_t Size = 7;

    int flags = 0;              // 0 to 255, shown and never interpreted
    std::uint32_t sequence = 0; // one more a frame
    double sMeter = 0;          // dBm
};

// Nothing for a frame too short to hold a header. frame: the message behind its tag.
std::optional<SoundHeader> ReadSoundHeader(std::string_view frame);

// The samples behind the header, 16 bits each, turned from the wire's big-endian into native order.
// An odd last byte comes along as it is.
MemoryBlock SoundSamples(std::string_view frame);

// Whether a receiver can send at that rate: 1 to 250,000 samples a second.
bool IsPossibleRate(double rate);

// Whether a block is the receiver's filler for squelched sound: samples of value 1, not 0.
bool QuietSoundData(const MemoryBlock& block, std::size_t sampleCount);

} // namespace larkspool
