#pragma once

#include "demo/Fft.h"

#include <cstdint>
#include <vector>

namespace larkspool::demo {

// What a broadcaster sends, rendered once and played in a loop by every station that has it. The
// real part is the sound, from -1 to 1; for voices the whole is free of negative frequencies, which
// is what a single sideband needs.
class Programme {
  public:
    // Samples a second; so high that linear interpolation is good enough.
    static constexpr double Rate = 32768.0;

    enum class Kind { FirstTune, SecondTune, DeepVoice, HighVoice };

    Programme(Kind kind, std::uint64_t seed);

    // Seconds until it begins again.
    double Length() const { return static_cast<double>(samples.size()) / Rate; }

    // The sample at a time from 0 to Length(), between samples interpolated.
    Sample At(double seconds) const;

    // The running sum of the sound over time, in seconds; the loop closes.
    float SumAt(double seconds) const;

  private:
    void FinishLoop();

    std::vector<Sample> samples;
    std::vector<float> sums;
};

} // namespace larkspool::demo
