#include "sound/ToneMeter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tonebridge::test {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr float Silence = 1e-4F;
constexpr double BlocksPerSecond = 100.0;

} // namespace

std::vector<std::int16_t> ToneSource::Next(std::size_t count, double amplitude) {
    std::vector<std::int16_t> block(count);
    for (std::int16_t& sample : block) {
        const double level = std::min(Seconds() / FadeIn, 1.0);
        const double height = amplitude * level * level * (3.0 - 2.0 * level);
        const double value = height * std::sin(turn * static_cast<double>(made++));
        sample = static_cast<std::int16_t>(std::lrint(std::clamp(value, -32768.0, 32767.0)));
    }
    return block;
}

ToneMeter::ToneMeter(double toneFrequency, double deviceRate, double peak)
    : frequency(toneFrequency), rate(deviceRate), amplitude(peak),
      ownStep(2.0 * peak * std::sin(Pi * toneFrequency / deviceRate)),
      turn(std::polar(1.0, -2.0 * Pi * toneFrequency / deviceRate)),
      window(static_cast<std::size_t>(deviceRate / BlocksPerSecond)) {
    // Without a window the tone's mirror frequency would blur the phase.
    for (std::size_t i = 0; i < window.size(); ++i) {
        const double part = (static_cast<double>(i) + 0.5) / static_cast<double>(window.size());
        window[i] = 0.5 - 0.5 * std::cos(2.0 * Pi * part);
    }
}

void ToneMeter::Add(std::span<const float> samples) {
    for (const float sample : samples) {
        Look(sample);
        sum += oscillator * (window[inBlock] * static_cast<double>(sample));
        oscillator *= turn;
        recent.push_back(sample);
        ++count;
        if (++inBlock == window.size()) {
            FinishBlock();
        }
    }
}

void ToneMeter::Look(float sample) {
    largestStep = std::max(largestStep, static_cast<double>(std::abs(sample - last)));
    highest = std::max(highest, static_cast<double>(std::abs(sample)));
    last = sample;
    if (std::abs(sample) < Silence) {
        ++silentFor;
        return;
    }
    const double silent = static_cast<double>(silentFor) / rate;
    if (HasBegun() && silent > 0.005) {
        gaps.push_back(silent);
    }
    silentFor = 0;
    if (!HasBegun() && std::abs(sample) > amplitude / 8.0) {
        // The swelling reaches an eighth of the tone's height after some 0.22 of its time.
        beganAt = static_cast<double>(count) / rate - 0.22 * ToneSource::FadeIn;
    }
}

void ToneMeter::FinishBlock() {
    const double middle =
        (static_cast<double>(count) - static_cast<double>(inBlock + 1) / 2.0) / rate;
    if (HasBegun() && middle > beganAt + ToneSource::FadeIn) {
        // A sine has its zero phase a quarter turn before the cosine of the sum.
        const double cycles = std::arg(sum) / (2.0 * Pi) + 0.25 + frequency * middle;
        const double guess = heard.empty() ? (middle - beganAt) * frequency
                                           : heard.back() * frequency + frequency / BlocksPerSecond;
        if (heard.empty()) {
            firstHeardAt = middle;
        }
        heard.push_back((cycles + std::round(guess - cycles)) / frequency);
    }
    sum = {};
    inBlock = 0;
    oscillator /= std::abs(oscillator);
    if (recent.size() > 100 * window.size()) {
        recent.erase(recent.begin(),
                     recent.end() - static_cast<std::ptrdiff_t>(10 * window.size()));
    }
}

double ToneMeter::Sinad() const {
    constexpr std::size_t Blocks = 5;
    const std::size_t length = window.size() * Blocks;
    if (heard.size() < Blocks || recent.size() < length + inBlock) {
        return 0.0;
    }
    const std::span<const float> sound = std::span(recent).last(length + inBlock).first(length);
    // The parabola through the first, the middle and the last block's phase.
    const std::span<const double> phase = std::span(heard).last(Blocks);
    const double slope = (phase[4] - phase[0]) / 1.6;
    const double bend = (phase[4] - 2.0 * phase[2] + phase[0]) / 1.28;
    // The least squares fit of a cosine and a sine at that phase.
    std::complex<double> squares;
    std::complex<double> match;
    double power = 0.0;
    const auto n = static_cast<double>(length);
    for (std::size_t i = 0; i < length; ++i) {
        const double x = (2.0 * static_cast<double>(i) + 1.0) / n - 1.0;
        const auto wave = std::polar(1.0, 2.0 * Pi * frequency * (slope + bend * x) * x);
        const double y = sound[i];
        squares += wave * wave;
        match += wave * y;
        power += y * y;
    }
    const double fitted = 2.0 *
                          (n * std::norm(match) - std::real(std::conj(squares) * match * match)) /
                          (n * n - std::norm(squares));
    return 10.0 * std::log10(power / (power - fitted));
}

} // namespace tonebridge::test
