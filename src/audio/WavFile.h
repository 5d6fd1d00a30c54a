#pragma once

#include "platform/FolderItem.h"

#include <cstdint>
#include <optional>

namespace larkspool {

// What the header of a recording says, and what is really there.
struct WavFileShape {
    std::int64_t sampleRate = 0;
    std::int64_t toldSamples = 0;  // by the header
    std::int64_t wholeSamples = 0; // behind the header
};

// Nothing unless the file begins with a header that is, byte for byte, one of ours. Where the last
// writing of a header broke off half-way, it tells of no samples yet.
std::optional<WavFileShape> LookAtWavFile(const FolderItem& file);

// Makes the header tell what is really there, in one write; the samples stay as they are.
bool PatchWavSizes(const FolderItem& file, const WavFileShape& shape);

} // namespace larkspool
