#include "demo/Band.h"

#include "demo/Morse.h"
#include "demo/Noise.h"

#include <algorithm>
#include <cmath>

namespace larkspool::demo {
namespace {

// Shifts a station's envelope to its frequency in the baseband and adds it, its amplitude going
// evenly from one value to the other.
void AddTurning(std::span<const Sample> envelope, double startTurns, double turnsPerSample,
                float fromAmplitude, float toAmplitude, std::span<Sample> out) {
    double real = std::cos(Turn * startTurns);
    double imag = std::sin(Turn * startTurns);
    const double stepReal = std::cos(Turn * turnsPerSample);
    const double stepImag = std::sin(Turn * turnsPerSample);
    const float step = (toAmplitude - fromAmplitude) / static_cast<float>(out.size());
    float amplitude = fromAmplitude;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const Sample carrier{static_cast<float>(real) * amplitude,
                             static_cast<float>(imag) * amplitude};
        out[i] += Times(carrier, envelope[i]);
        const double next = real * stepReal - imag * stepImag;
        imag = real * stepImag + imag * stepReal;
        real = next;
        amplitude += step;
    }
}

// The share of its fading by which a station is up or down now: two swings with unrelated periods,
// so that no fade is like the one before.
double Swing(std::uint64_t bits, const Moment& at) {
    const double slow = 9.0 + static_cast<double>(bits % 17);
    const double quick = 0.31 * slow;
    return 0.6 * std::sin(Turn * (at.Within(slow) / slow + Fraction(bits))) +
           0.4 * std::sin(Turn * at.Within(quick) / quick);
}

// Different for each antenna, so that no two hear the same noise.
std::uint64_t AntennaNumber(const Antenna& antenna) {
    return static_cast<std::uint64_t>(antenna.bestKhz + 7.0 * antenna.bearing.value_or(100.0));
}

// Where in its programme a station is follows from its frequency, so that a new station in the
// table leaves the others as they were.
Transmitter Prepare(const Station& station) {
    Transmitter ready;
    ready.station = station;
    ready.offset = std::fmod(0.37 * station.khz, 16.0);
    if (station.kind == Kind::Morse) {
        ready.keying = MorseKeying(station.text);
    } else if (station.kind == Kind::Teleprinter) {
        ready.keying = TeleprinterBits(station.text);
    }
    return ready;
}

} // namespace

Band::Band(std::uint64_t bandSeed) : seed(bandSeed) {
    using enum Programme::Kind;
    for (const auto kind : {FirstTune, SecondTune, DeepVoice, HighVoice}) {
        programmes.emplace_back(kind, seed);
    }
    for (const Station& station : Stations()) {
        transmitters.push_back(Prepare(station));
        transmitters.back().programme = ProgrammeFor(station);
    }
}

const Programme* Band::ProgrammeFor(const Station& station) const {
    switch (station.kind) {
    case Kind::FirstTune:
    case Kind::Frequency:
        return &programmes[0];
    case Kind::SecondTune:
        return &programmes[1];
    case Kind::DeepVoice:
        return &programmes[2];
    case Kind::HighVoice:
        return &programmes[3];
    case Kind::LowerSideband:
    case Kind::UpperSideband:
        return &programmes[2 + static_cast<std::size_t>(station.khz) % 2];
    default:
        return nullptr;
    }
}

float Band::Amplitude(const Transmitter& transmitter, const Antenna& antenna,
                      const Moment& at) const {
    const Station& station = transmitter.station;
    double dbm = station.dbm + antenna.GainDb(station.khz * 1000.0, station.bearing);
    if (station.fadingDb > 0.0) {
        const std::uint64_t bits = Scramble(seed, static_cast<std::uint64_t>(station.khz * 1000.0));
        dbm += station.fadingDb * Swing(bits, at);
    }
    return static_cast<float>(std::pow(10.0, dbm / 20.0));
}

void Band::AddStations(const Antenna& antenna, const Moment& from, double centerHertz, double rate,
                       std::span<Sample> out) const {
    // No station changes noticeably within so short a time.
    constexpr double Instant = 0.0005;
    const double seconds = static_cast<double>(out.size()) / rate;
    const double lowest = (centerHertz - rate / 2.0) / 1000.0;
    const double highest = (centerHertz + rate / 2.0) / 1000.0;
    const auto first = std::ranges::lower_bound(
        transmitters, lowest, {}, [](const Transmitter& one) { return one.station.khz; });
    std::vector<Sample> envelope(out.size());
    const Moment end = from.After(seconds);
    for (auto one = first; one != transmitters.end() && one->station.khz < highest; ++one) {
        if (seconds < Instant) {
            RenderEnvelope(*one, from, rate, std::span(envelope).first(1));
            std::ranges::fill(envelope, envelope.front());
        } else {
            RenderEnvelope(*one, from, rate, envelope);
        }
        const double offset = one->station.khz * 1000.0 - centerHertz;
        AddTurning(envelope, from.Turns(offset), offset / rate, Amplitude(*one, antenna, from),
                   Amplitude(*one, antenna, end), out);
    }
}

double Band::CrashFactor(const Antenna& antenna, const Moment& at, double hertz) const {
    constexpr int SlotSeconds = 4; // at most one crash each
    constexpr double Chance = 0.3;
    constexpr double StrongestDb = 32.0; // over the noise, at 1 MHz and below
    constexpr double DbPerOctave = 7.0;  // so that at 10 MHz no crash opens a squelch of 10 dB
    const auto slot = static_cast<std::uint64_t>(at.second / SlotSeconds);
    const std::uint64_t bits = Scramble(seed, 77, slot);
    if (Fraction(bits) >= Chance) {
        return 1.0;
    }
    const double into = at.Within(SlotSeconds) - Fraction(Scramble(bits, 1)) * (SlotSeconds - 1.0);
    if (into < 0.0 || into > 0.9) {
        return 1.0;
    }
    // A crash is a handful of strokes, each dying away.
    const double length = 0.05 + 0.2 * Fraction(Scramble(bits, 2));
    const auto stroke = static_cast<std::uint64_t>(into / 0.011);
    const double flicker = 10.0 * Fraction(Scramble(bits, 3, stroke)) - 10.0;
    const double octaves = std::max(0.0, std::log2(std::max(hertz, 1.0e6) / 1.0e6));
    const double db = StrongestDb + antenna.crashDb - DbPerOctave * octaves + flicker -
                      8.0 * Fraction(Scramble(bits, 4)) - 8.7 * into / length;
    return 1.0 + std::pow(10.0, db / 10.0);
}

void Band::AddNoise(const Antenna& antenna, const Moment& from, double centerHertz, double rate,
                    std::span<Sample> out) const {
    constexpr std::size_t Step = 64; // samples between two looks at the lightning
    const double power = std::pow(10.0, antenna.NoiseDbmHz(centerHertz) / 10.0) * rate;
    Noise noise(Scramble(seed, static_cast<std::uint64_t>(from.second),
                         static_cast<std::uint64_t>(from.fraction * 1.0e9) +
                             (AntennaNumber(antenna) << 32)));
    for (std::size_t at = 0; at < out.size(); at += Step) {
        const double seconds = static_cast<double>(at) / rate;
        const auto scale = static_cast<float>(
            std::sqrt(power * CrashFactor(antenna, from.After(seconds), centerHertz)));
        for (Sample& sample : out.subspan(at, std::min(Step, out.size() - at))) {
            sample += scale * noise.NextComplex();
        }
    }
}

} // namespace larkspool::demo
