#pragma once

#include "platform/FolderItem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace larkspool {

inline constexpr std::size_t WavHeaderSize = 44; // bytes

// The header of a WAV file: one channel, 16-bit PCM, little-endian. Its size fields have 32 bits;
// where they can't hold the number of samples, they hold the largest number that fits.
std::string WavHeader(std::int64_t sampleRate, std::int64_t samples);

// What the header of a recording says, and what the file holds.
struct WavFileShape {
    std::int64_t sampleRate = 0;
    std::int64_t headerSamples = 0; // according to the header
    std::int64_t wholeSamples = 0;  // after the header
};

// Empty unless the file begins with a header that is, byte for byte, one that WavHeader makes. If
// the last write of a header stopped half-way, headerSamples is 0.
std::optional<WavFileShape> LookAtWavFile(const FolderItem& file);

// Writes the number of samples that the file holds into its header, in one write. The samples stay
// as they are.
bool PatchWavSizes(const FolderItem& file, const WavFileShape& shape);

} // namespace larkspool
