#pragma once

#include "tonebridge/SampleRing.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace tonebridge {

// The reader's position in the ring. It can skip forward without a click, by cross-fading from the
// old position to the new one. Used on the device's thread only; owned by the engine.
class SampleReader {
  public:
    explicit SampleReader(SampleRing& samples) : ring(samples) {}

    // Sets the position at which reading must stop.
    void SetEnd(std::uint64_t newEnd) { end = newEnd; }
    // Samples that Read can still give.
    std::size_t Available() const;
    // Fills out with the samples that exist and returns their number.
    std::size_t Read(std::span<float> out);

    // Skips count samples, cross-fading over fadeLength, which is at least 1.
    void Leap(std::size_t count, std::size_t fadeLength);
    bool IsLeaping() const { return leap > 0; }
    void MoveTo(std::uint64_t newPosition);
    // Skips count samples without a fade, while nothing is heard.
    void Skip(std::size_t count) { MoveTo(position + count); }

  private:
    void CrossFade(std::span<float> out);

    SampleRing& ring;
    std::uint64_t position = 0;
    std::uint64_t end = 0;
    std::size_t leap = 0;
    std::size_t fadeTotal = 0;
    std::size_t fadeDone = 0;
};

} // namespace tonebridge
