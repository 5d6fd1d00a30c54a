#pragma once

#include "demo/Fft.h"

#include <cstddef>
#include <span>
#include <vector>

namespace larkspool::demo {

// Cuts a passband out of a complex baseband and halves its rate on the way.
class PassbandFilter {
  public:
    static constexpr std::size_t InputSize = 1024; // samples taken at a time
    static constexpr std::size_t OutputSize = 512; // samples returned, at half the rate

    PassbandFilter();

    // Edges in Hz relative to the center, in any order; rate is that of the input.
    void Set(double low, double high, double rate);

    // input has InputSize samples, output OutputSize. Delays by 512 input samples.
    void Process(std::span<const Sample> input, std::span<Sample> output);

    // The width in Hz of an ideal filter that lets as much noise through.
    double NoiseBandwidth() const { return noiseBandwidth; }

  private:
    Fft wide{2 * InputSize};
    Fft narrow{InputSize};
    std::vector<Sample> response;
    std::vector<Sample> previous;
    std::vector<Sample> spectrum;
    std::vector<Sample> folded;
    double noiseBandwidth = 0.0;
};

} // namespace larkspool::demo
