#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace tonebridge {

// A gain that goes from one value to another along a smooth curve, so that no change is heard as a
// click.
class GainRamp {
  public:
    explicit GainRamp(float level) : from(level), to(level) {}

    // Moves to target within this number of frames.
    void Aim(float target, std::size_t frames) {
        from = Level();
        to = target;
        length = frames;
        done = 0;
    }

    float Target() const { return to; }
    std::size_t Remaining() const { return length - done; }

    float Level() const {
        if (done >= length) {
            return to;
        }
        const float x = static_cast<float>(done) / static_cast<float>(length);
        return from + (to - from) * x * x * (3.0F - 2.0F * x);
    }

    void Apply(std::span<float> samples) {
        const std::size_t ramped = std::min(samples.size(), Remaining());
        for (float& value : samples.first(ramped)) {
            value *= Level();
            ++done;
        }
        for (float& value : samples.subspan(ramped)) {
            value *= to;
        }
    }

  private:
    float from;
    float to;
    std::size_t length = 0;
    std::size_t done = 0;
};

} // namespace tonebridge
