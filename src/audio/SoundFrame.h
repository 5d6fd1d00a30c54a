#pragma once

#include "platform/MemoryBlock.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspool {

// An audio frame. It has two byte orders: the sequence number is little-endian on the wire, the
// S-meter and the samples are big-endian.
struct SoundFrame {
    static constexpr std::size_t HeaderSize = 7;

    int flags = 0;              // 0 to 255, only shown
    std::uint32_t sequence = 0; // increases by one per frame
    double sMeter = 0;          // dBm
    MemoryBlock samples;        // 16 bits each, in native order; an odd last byte is kept

    std::size_t SampleCount() const { return samples.Size() / 2; }
};

// Empty if the frame is too short to hold a header. frame: the message after its tag.
std::optional<SoundFrame> ReadSoundFrame(std::string_view frame);

// Whether a receiver can send at this rate: 1 to 250,000 samples per second.
bool IsPossibleRate(double rate);

// Whether a block is what the receiver sends while the squelch is closed: samples of value 1, not
// 0.
bool QuietSoundData(const MemoryBlock& block, std::size_t sampleCount);

} // namespace larkspool
