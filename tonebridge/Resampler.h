#pragma once

#include "tonebridge/SampleReader.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>

struct SRC_STATE_tag;

namespace tonebridge {

// Turns samples at the receiver's rate into samples at the device's, with a
// ratio that glides from block to block. Allocates only when it is made. Owned
// by the engine.
class Resampler {
  public:
    Resampler();

    // Forgets all sound that it holds.
    void Clear();
    // Fills `out` from `reader`, ending at `ratio` (output over input rate);
    // returns the frames made, fewer only where the reader ran dry.
    std::size_t Pull(SampleReader& reader, std::span<float> out, double ratio);
    // Input samples taken from the reader but not yet heard.
    double Held() const { return taken - heard + static_cast<double>(pendingCount); }
    // Input samples that it must hold back to make the next frame.
    static double LookAhead(double ratio);

  private:
    struct Deleter {
        void operator()(SRC_STATE_tag* converter) const;
    };

    bool Refill(SampleReader& reader, double framesToMake, double ratio);
    std::size_t Convert(std::span<float> out, double ratio);

    std::unique_ptr<SRC_STATE_tag, Deleter> state;
    std::array<float, 1024> pending{};
    std::size_t pendingStart = 0;
    std::size_t pendingCount = 0;
    double lastRatio = 0.0;
    double taken = 0.0;
    double heard = 0.0;
};

} // namespace tonebridge
