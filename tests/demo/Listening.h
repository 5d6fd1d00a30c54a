#pragma once

#include "demo/SoundStream.h"
#include "demo/WebSocketFrame.h"

#include <cmath>
#include <complex>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace larkspool::demo {

constexpr double Rate = 12000.0;

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

inline SoundStream Stream(const Tuning& tuning, const Antenna& antenna = Antennas()[0]) {
    SoundStream stream(SharedBand(), antenna, Rate);
    stream.Tune(tuning);
    return stream;
}

// The samples of so many seconds of frames from a moment on, as a client reads them.
inline std::vector<double> Listen(SoundStream& stream, const Moment& from, double seconds) {
    std::vector<double> samples;
    constexpr double frameSeconds = SoundStream::SamplesPerFrame / Rate;
    const auto frames = std::lround(std::ceil(seconds / frameSeconds));
    for (long number = 0; number < frames; ++number) {
        const auto frame = stream.Frame(from.After(static_cast<double>(number) * frameSeconds));
        for (std::size_t i = 10; i < frame.size(); i += 2) {
            samples.push_back(static_cast<std::int16_t>(frame[i] << 8 | frame[i + 1]));
        }
    }
    return samples;
}

// The amplitude of one frequency in the samples, through a soft window.
inline double AmplitudeAt(std::span<const double> samples, double hertz) {
    std::complex<double> sum{};
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto at = static_cast<double>(i);
        const double window = 1.0 - std::cos(Turn * at / count);
        sum += samples[i] * window * std::polar(1.0, -Turn * hertz * at / Rate);
    }
    return 2.0 * std::abs(sum) / count;
}

// The frequency from 50 Hz to 5 kHz that is strongest, to 5 Hz.
inline double StrongestHertz(std::span<const double> samples) {
    double best = 0.0;
    double strongest = 0.0;
    for (int step = 10; step <= 1000; ++step) {
        const double hertz = 5.0 * step;
        if (const double amplitude = AmplitudeAt(samples, hertz); amplitude > strongest) {
            strongest = amplitude;
            best = hertz;
        }
    }
    return best;
}

// A frame as a client sends it, masked; the first byte says what kind it is.
inline std::vector<std::uint8_t> ClientFrame(std::string_view text, std::uint8_t first = 0x82) {
    constexpr std::uint8_t key[] = {0x37, 0xFA, 0x21, 0x3D};
    const std::vector<std::uint8_t> payload(text.begin(), text.end());
    auto frame = EncodeFrame(Opcode::Binary, payload);
    frame.resize(frame.size() - payload.size());
    frame[0] = first;
    frame[1] |= 0x80;
    frame.insert(frame.end(), key, key + 4);
    for (std::size_t i = 0; i < payload.size(); ++i) {
        frame.push_back(payload[i] ^ key[i % 4]);
    }
    return frame;
}

} // namespace larkspool::demo
