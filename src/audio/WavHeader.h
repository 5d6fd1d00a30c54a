#pragma once

#include <cstdint>
#include <string>

namespace larkspool {

// The 44 bytes in front of a WAV file's samples: one channel, 16-bit PCM, little-endian.
std::string WavHeader(std::int64_t sampleRate, std::int64_t samples);

} // namespace larkspool
