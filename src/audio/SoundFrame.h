#pragma once

#include "platform/MemoryBlock.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspool {

// An audio frame. Two byte orders meet in it: the sequence number is little-endian on the wire, the
// S-meter and the samples are big-endian.
struct SoundFrame {
    static constexpr std::size_t HeaderSize = 7;

    int flags = 0;              // 0 to 255, shown and never interpreted
    std::uint32_t sequence = 0; // one more a frame
    double sMeter = 0;          // dBm
    MemoryBlock samples;        // 16 bits each, in native order; an odd last byte is kept as it is

    std::size_t SampleCount() const { return samples.Size() / 2; }
};

// Nothing for a frame too short to hold a header. frame: the message behind its tag.
std::optional<SoundFrame> ReadSoundFrame(std::string_view frame);

// Whether a receiver can send at that rate: 1 to 250,000 samples a second.
bool IsPossibleRate(double rate);

// Whether a block is the receiver's filler for squelched sound: samples of value 1, not 0.
bool QuietSoundData(const MemoryBlock& block, std::size_t sampleCount);

} // namespace larkspool
