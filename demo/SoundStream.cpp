#include "demo/SoundStream.h"

#include <algorithm>
#include <cmath>

namespace larkspool::demo {
namespace {

constexpr std::size_t SamplesOfAir = PassbandFilter::InputSize;

void PutBigEndian16(std::vector<std::uint8_t>& message, unsigned value) {
    message.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFF));
    message.push_back(static_cast<std::uint8_t>(value & 0xFF));
}

} // namespace

SoundStream::SoundStream(const Band& sharedBand, const Antenna& ownAntenna, double samplesPerSecond)
    : band(sharedBand), antenna(ownAntenna), rate(samplesPerSecond), air(SamplesOfAir),
      passed(SamplesPerFrame), sound(SamplesPerFrame) {
    Tune(tuning);
}

void SoundStream::Tune(const Tuning& wanted) {
    if (wanted.khz != tuning.khz) {
        filled = false;
    }
    if (wanted.squelch != tuning.squelch) {
        tailFrames = 0;
    }
    tuning = wanted;
    double low = std::min(tuning.lowCut, tuning.highCut);
    double high = std::max(tuning.lowCut, tuning.highCut);
    // The carrier on the edge stays in, for it is what these modes lock to.
    if (tuning.mode == Mode::Sal && low < 0.0) {
        high = std::min(high, 0.0);
    }
    if (tuning.mode == Mode::Sau && high > 0.0) {
        low = std::max(low, 0.0);
    }
    filter.Set(low, high, 2.0 * rate);
    demodulator.Set(tuning.mode, rate);
    agc.Set(tuning, rate);
    constexpr double TimeConstants[] = {0.0, 75.0e-6, 50.0e-6};
    const double seconds = TimeConstants[tuning.deEmphasis];
    emphasisShare =
        seconds > 0.0 ? static_cast<float>(1.0 - std::exp(-1.0 / (seconds * rate))) : 1.0F;
}

double SoundStream::NoiseDbm() const {
    return antenna.NoiseDbmHz(tuning.khz * 1000.0) + 10.0 * std::log10(filter.NoiseBandwidth());
}

void SoundStream::Receive(const Moment& from) {
    std::ranges::fill(air, Sample{});
    band.AddStations(antenna, from, tuning.khz * 1000.0, 2.0 * rate, air);
    band.AddNoise(antenna, from, tuning.khz * 1000.0, 2.0 * rate, air);
    filter.Process(air, passed);
    demodulator.Process(passed, sound);
}

// Gives filter and demodulator what was on the air before, so that a retuning doesn't click.
void SoundStream::FillFilter(const Moment& from) {
    filled = true;
    for (const double framesBack : {2.0, 1.0}) {
        demodulator.Restart();
        Receive(from.After(-framesBack * SamplesPerFrame / rate));
    }
    smoothedPower = -1.0;
}

void SoundStream::MeasureAndSquelch() {
    double power = 0.0;
    for (const Sample& sample : passed) {
        power += std::norm(sample);
    }
    power = std::max(power / SamplesPerFrame, 1.0e-20);
    sMeter = 10.0 * std::log10(power);
    smoothedPower = smoothedPower < 0.0 ? power : smoothedPower + 0.4 * (power - smoothedPower);
    if (10.0 * std::log10(smoothedPower) - NoiseDbm() >= tuning.squelch) {
        tailFrames = 1 + static_cast<int>(std::ceil(tuning.squelchTail * rate / SamplesPerFrame));
    } else if (tailFrames > 0) {
        --tailFrames;
    }
}

void SoundStream::PutSamples(std::vector<std::uint8_t>& message) {
    constexpr unsigned Filler = 1; // what a client takes for "squelched"
    const bool squelched = IsSquelched();
    for (std::size_t i = 0; i < SamplesPerFrame; ++i) {
        const float gain = agc.Gain(std::sqrt(std::norm(passed[i])));
        const float loud = sound[i] * (demodulator.IsLeveled() ? 1.0F : gain);
        emphasis += emphasisShare * (loud - emphasis);
        const float level =
            tuning.muted ? 0.0F : std::clamp(emphasis * 32767.0F, -32767.0F, 32767.0F);
        PutBigEndian16(message, squelched ? Filler : static_cast<unsigned>(std::lrint(level)));
    }
}

std::vector<std::uint8_t> SoundStream::Frame(const Moment& from) {
    if (!filled) {
        FillFilter(from);
    }
    Receive(from);
    MeasureAndSquelch();
    std::vector<std::uint8_t> message{'S', 'N', 'D', 0};
    message.reserve(10 + 2 * SamplesPerFrame);
    for (unsigned shift = 0; shift < 32; shift += 8) {
        message.push_back(static_cast<std::uint8_t>(sequence >> shift & 0xFF));
    }
    ++sequence;
    PutBigEndian16(message, static_cast<unsigned>(
                                std::lrint(std::clamp((sMeter + 127.0) * 10.0, 0.0, 65535.0))));
    PutSamples(message);
    return message;
}

} // namespace larkspool::demo
