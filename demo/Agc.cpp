#include "demo/Agc.h"

#include <algorithm>
#include <cmath>

namespace larkspool::demo {
namespace {

constexpr float SteadyLevel = 0.5F;      // share of full scale
constexpr float ReferenceLevel = 0.001F; // -60 dBm comes out at the steady level

} // namespace

void Agc::Set(const Tuning& tuning, double rate) {
    constexpr double HangReleaseSeconds = 0.1;
    on = tuning.agc;
    manual = static_cast<float>(std::pow(10.0, tuning.manualGain / 20.0));
    weakest = static_cast<float>(std::pow(10.0, tuning.threshold / 20.0));
    exponent = static_cast<float>(tuning.slope / 100.0 - 1.0);
    const double decaySeconds = std::max(tuning.decay, 5.0) / 1000.0;
    const double releaseSeconds = tuning.hang ? HangReleaseSeconds : decaySeconds;
    release = static_cast<float>(std::exp(-1.0 / (releaseSeconds * rate)));
    hangSamples = tuning.hang ? static_cast<int>(decaySeconds * rate) : 0;
    untilRelease = std::min(untilRelease, hangSamples);
    gain = GainFor(peak);
}

float Agc::GainFor(float heard) const {
    const float strength = std::max(heard, std::max(weakest, 1.0e-9F));
    return SteadyLevel / ReferenceLevel * std::pow(strength / ReferenceLevel, exponent);
}

float Agc::Gain(float amplitude) {
    if (!on) {
        return manual;
    }
    if (amplitude >= peak) {
        peak = amplitude;
        untilRelease = hangSamples;
    } else if (untilRelease > 0) {
        --untilRelease;
        return gain;
    } else {
        peak = std::max(amplitude, peak * release);
    }
    return gain = GainFor(peak);
}

} // namespace larkspool::demo
