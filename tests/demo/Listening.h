#pragma once

#include "demo/SoundStream.h"

#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

namespace larkspool::demo {

// One band for all tests of a program: its programmes take a while to render.
inline const Band& SharedBand() {
    static const Band band(1);
    return band;
}

// Half a minute past a full minute, so that no long pip is near.
constexpr Moment someTime{1'700'000'010, 0.25};

inline Tuning TunedTo(double khz, Mode mode, double low, double high) {
    Tuning tuning;
    tuning.khz = khz;
    tuning.mode = mode;
    tuning.lowCut = low;
    tuning.highCut = high;
    return tuning;
}

inline std::int16_t SampleAt(std::span<const std::uint8_t> frame, std::size_t index) {
    return static_cast<std::int16_t>(frame[10 + 2 * index] << 8 | frame[11 + 2 * index]);
}

// The samples of so many seconds of frames from a moment on, as a client reads them.
inline std::vector<double> Listen(SoundStream& stream, const Moment& from, double seconds,
                                  double rate = 12000.0) {
    std::vector<double> samples;
    const double frameSeconds = SoundStream::SamplesPerFrame / rate;
    const auto frames = std::lround(std::ceil(seconds / frameSeconds));
    for (long number = 0; number < frames; ++number) {
        const auto frame = stream.Frame(from.After(static_cast<double>(number) * frameSeconds));
        for (std::size_t i = 0; i < SoundStream::SamplesPerFrame; ++i) {
            samples.push_back(SampleAt(frame, i));
        }
    }
    return samples;
}

// The amplitude of one frequency in the samples, through a soft window.
inline double AmplitudeAt(std::span<const double> samples, double hertz, double rate = 12000.0) {
    constexpr double turn = 2.0 * std::numbers::pi;
    std::complex<double> sum{};
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto at = static_cast<double>(i);
        const double window = 1.0 - std::cos(turn * at / count);
        sum += samples[i] * window * std::polar(1.0, -turn * hertz * at / rate);
    }
    return 2.0 * std::abs(sum) / count;
}

// The frequency from 50 Hz to 5 kHz that is strongest, to 5 Hz.
inline double StrongestHertz(std::span<const double> samples, double rate = 12000.0) {
    double best = 0.0;
    double strongest = 0.0;
    for (int tried = 50; tried <= 5000; tried += 5) {
        const double hertz = tried;
        if (const double amplitude = AmplitudeAt(samples, hertz, rate); amplitude > strongest) {
            strongest = amplitude;
            best = hertz;
        }
    }
    return best;
}

} // namespace larkspool::demo
