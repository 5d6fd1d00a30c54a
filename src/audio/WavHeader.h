#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace larkspool {

inline constexpr std::size_t WavHeaderSize = 44; // bytes

// What stands in front of a WAV file's samples: one channel, 16-bit PCM, little-endian. More
// samples than its 32-bit sizes can tell are told as the most that they can.
std::string WavHeader(std::int64_t sampleRate, std::int64_t samples);

} // namespace larkspool
