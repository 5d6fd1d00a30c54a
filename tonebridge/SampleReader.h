#pragma once

#include "tonebridge/SampleRing.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace tonebridge {

// The reader's place in the ring. It can leap forward without a click, by
// cross-fading from where it is to where it will be. Used on the device's
// thread only; owned by the engine.
class SampleReader {
  public:
    explicit SampleReader(SampleRing& samples) : ring(samples) {}

    // How far reading may go from now on.
    void SetEnd(std::uint64_t newEnd) { end = newEnd; }
    // Samples that Read has still to give.
    std::size_t Available() const;
    // Fills `out` as far as there are samples and returns how many.
    std::size_t Read(std::span<float> out);

    // Leaves out `count` samples, cross-fading over `fadeLength`, which is at least 1.
    void Leap(std::size_t count, std::size_t fadeLength);
    bool IsLeaping() const { return leap > 0; }
    void MoveTo(std::uint64_t newPosition);
    // Leaves out `count` samples where nobody hears it.
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
