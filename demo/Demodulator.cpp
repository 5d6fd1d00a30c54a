#include "demo/Demodulator.h"

#include <algorithm>
#include <cmath>

namespace larkspool::demo {

void Demodulator::Set(Mode newMode, double rate) {
    constexpr double FarthestHertz = 300.0;
    constexpr double FullDeviation = 5000.0;
    if (newMode != mode) {
        Restart();
    }
    mode = newMode;
    fastest = Turn * FarthestHertz / rate;
    fmScale = static_cast<float>(rate / (Turn * FullDeviation));
}

void Demodulator::Restart() {
    meanKnown = false;
    pace = 0.0;
}

void Demodulator::Process(std::span<const Sample> baseband, std::span<float> sound) {
    for (std::size_t i = 0; i < sound.size(); ++i) {
        switch (mode) {
        case Mode::Am:
        case Mode::Amn:
            sound[i] = Envelope(baseband[i]);
            break;
        case Mode::Sam:
        case Mode::Sal:
        case Mode::Sau:
            sound[i] = Synchronous(baseband[i]);
            break;
        case Mode::Nbfm:
            sound[i] = Discriminator(baseband[i]);
            break;
        default:
            sound[i] = baseband[i].real();
            break;
        }
    }
}

float Demodulator::Envelope(const Sample& sample) {
    return WithoutMean(std::sqrt(std::norm(sample)));
}

float Demodulator::Synchronous(const Sample& sample) {
    constexpr double Quickness = 0.02;
    const Sample turned =
        Times(sample, {static_cast<float>(std::cos(phase)), static_cast<float>(-std::sin(phase))});
    const double error = std::atan2(turned.imag(), turned.real());
    pace = std::clamp(pace + error * Quickness * Quickness / 4.0, -fastest, fastest);
    phase = std::remainder(phase + pace + error * Quickness, Turn);
    return WithoutMean(turned.real());
}

float Demodulator::Discriminator(const Sample& sample) {
    const Sample step = Times(sample, std::conj(previous));
    previous = sample;
    return std::atan2(step.imag(), step.real()) * fmScale;
}

// Removes the carrier's level, and with it all below some 10 Hz.
float Demodulator::WithoutMean(float value) {
    constexpr float Quickness = 0.005F;
    mean = meanKnown ? mean + Quickness * (value - mean) : value;
    meanKnown = true;
    return value - mean;
}

} // namespace larkspool::demo
