#include "demo/Envelope.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace larkspool::demo {
namespace {

constexpr double PipSeconds = 0.1;
constexpr double MinutePipSeconds = 0.3; // a listener of two seconds still hears the tone most

Sample Turned(double turns) {
    const double angle = Turn * (turns - std::floor(turns));
    return {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
}

// Calls value with the seconds of each element since the start, for kinds whose every sample
// follows from the time alone.
template <typename Function>
void Fill(std::span<Sample> out, double rate, Function value) {
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = value(static_cast<double>(i) / rate);
    }
}

void RenderDrift(double swingHertz, const Moment& from, double rate, std::span<Sample> out) {
    constexpr double Period = 300.0;
    const double start = from.Within(Period);
    Fill(out, rate, [=](double t) {
        return Turned(-swingHertz * Period / Turn * std::cos(Turn * (start + t) / Period));
    });
}

void RenderTime(bool toneBetween, const Moment& from, double rate, std::span<Sample> out) {
    const double start = from.Within(60.0);
    Fill(out, rate, [=](double t) {
        const double inMinute = std::fmod(start + t, 60.0);
        const double inSecond = inMinute - std::floor(inMinute);
        const bool pip = inSecond < (inMinute < 1.0 ? MinutePipSeconds : PipSeconds);
        double hertz = 1000.0;
        if (toneBetween && pip) {
            hertz = 2000.0;
        } else if (!toneBetween && !pip) {
            hertz = 0.0;
        }
        return Sample{static_cast<float>(1.0 + 0.5 * std::sin(Turn * hertz * inSecond)), 0.0F};
    });
}

void RenderBroadcast(const Transmitter& transmitter, const Moment& from, double rate,
                     std::span<Sample> out) {
    const double length = transmitter.programme->Length();
    const double start = from.After(transmitter.offset).Within(length);
    Fill(out, rate, [&](double t) {
        const double sound = transmitter.programme->At(start + t).real();
        return Sample{static_cast<float>(1.0 + transmitter.station.depth * sound), 0.0F};
    });
}

void RenderSideband(const Transmitter& transmitter, const Moment& from, double rate,
                    std::span<Sample> out) {
    const double speed = transmitter.station.speed;
    const double length = transmitter.programme->Length();
    const double start = from.After(transmitter.offset).Within(length / speed) * speed;
    const bool lower = transmitter.station.kind == Kind::LowerSideband;
    Fill(out, rate, [&](double t) {
        const Sample voice = transmitter.programme->At(start + t * speed);
        return lower ? std::conj(voice) : voice;
    });
}

void RenderFrequency(const Transmitter& transmitter, const Moment& from, double rate,
                     std::span<Sample> out) {
    const double start = from.Within(transmitter.programme->Length());
    Fill(out, rate, [&](double t) {
        const double sum = transmitter.programme->SumAt(start + t);
        return Turned(transmitter.station.deviationHz * sum);
    });
}

// The key rises and falls within 5 ms, so that it doesn't click.
double KeyShape(const std::vector<std::uint8_t>& keying, double place, double unit) {
    constexpr double Edge = 0.005;
    const auto index = static_cast<std::size_t>(place) % keying.size();
    if (keying[index] == 0) {
        return 0.0;
    }
    const double into = (place - std::floor(place)) * unit;
    const bool wasUp = keying[(index + keying.size() - 1) % keying.size()] == 0;
    const bool goesUp = keying[(index + 1) % keying.size()] == 0;
    double share = 1.0;
    if (wasUp) {
        share = std::min(share, into / Edge);
    }
    if (goesUp) {
        share = std::min(share, (unit - into) / Edge);
    }
    return share >= 1.0 ? 1.0 : 0.5 - 0.5 * std::cos(std::numbers::pi * share);
}

void RenderMorse(const Transmitter& transmitter, const Moment& from, double rate,
                 std::span<Sample> out) {
    const double unit = 1.2 / transmitter.station.wordsPerMinute;
    const double start = from.Within(unit * static_cast<double>(transmitter.keying.size()));
    Fill(out, rate, [&](double t) {
        return Sample{static_cast<float>(KeyShape(transmitter.keying, (start + t) / unit, unit)),
                      0.0F};
    });
}

// At 50 baud a shift of 100 Hz makes two whole turns a bit: the phase never jumps.
void RenderTeleprinter(const Transmitter& transmitter, const Moment& from, double rate,
                       std::span<Sample> out) {
    constexpr double BitSeconds = 0.02;
    constexpr double ShiftHertz = 100.0;
    const double start = from.Within(BitSeconds * static_cast<double>(transmitter.keying.size()));
    Fill(out, rate, [&](double t) {
        const double place = (start + t) / BitSeconds;
        const auto index = static_cast<std::size_t>(place) % transmitter.keying.size();
        const double hertz = transmitter.keying[index] == 1 ? -ShiftHertz : ShiftHertz;
        return Turned(hertz * (place - std::floor(place)) * BitSeconds);
    });
}

} // namespace

void RenderEnvelope(const Transmitter& transmitter, const Moment& from, double rate,
                    std::span<Sample> out) {
    switch (transmitter.station.kind) {
    case Kind::Carrier:
        std::ranges::fill(out, Sample{1.0F, 0.0F});
        break;
    case Kind::DriftingTone:
        RenderDrift(transmitter.station.swingHz, from, rate, out);
        break;
    case Kind::TimeTone:
        RenderTime(true, from, rate, out);
        break;
    case Kind::TimePips:
        RenderTime(false, from, rate, out);
        break;
    case Kind::FirstTune:
    case Kind::SecondTune:
    case Kind::DeepVoice:
    case Kind::HighVoice:
        RenderBroadcast(transmitter, from, rate, out);
        break;
    case Kind::Morse:
        RenderMorse(transmitter, from, rate, out);
        break;
    case Kind::Teleprinter:
        RenderTeleprinter(transmitter, from, rate, out);
        break;
    case Kind::LowerSideband:
    case Kind::UpperSideband:
        RenderSideband(transmitter, from, rate, out);
        break;
    case Kind::Frequency:
        RenderFrequency(transmitter, from, rate, out);
        break;
    }
}

} // namespace larkspool::demo
