#pragma once

#include "demo/Command.h"

namespace larkspool::demo {

// Follows the strength of a signal and gives the gain that brings it to a steady loudness. Rises of
// the signal act at once, so nothing overshoots.
class Agc {
  public:
    void Set(const Tuning& tuning, double rate);

    // amplitude is the square root of a power in milliwatts; the result takes it to a share of full
    // scale.
    float Gain(float amplitude);

  private:
    float GainFor(float heard) const;

    bool on = true;
    float peak = 0.0F;
    float gain = 0.0F;
    float weakest = 0.0F;   // amplitude at the threshold
    float exponent = -1.0F; // of the gain over the amplitude
    float release = 0.0F;   // factor of the peak per sample
    int hangSamples = 0;
    int untilRelease = 0;
    float manual = 0.0F;
};

} // namespace larkspool::demo
