#include "sound/ToneMeter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tonebridge::test {

namespace {

constexpr double pi = std::numbers::pi;
constexpr float silence = 1e-4F;
constexpr double blocksPerSecond = 100.0;

// The parabola through `values`, whose abscissae run from -1 to 1.
struct Parabola {
    double constant = 0.0;
    double slope = 0.0;
    double bend = 0.0;
    double At(double x) const { return constant + (slope + bend * x) * x; }
};

Parabola FitParabola(std::span<const double> values) {
    double s2 = 0.0;
    double s4 = 0.0;
    double y0 = 0.0;
    double y1 = 0.0;
    double y2 = 0.0;
    const double n = static_cast<double>(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double x = (2.0 * static_cast<double>(i) + 1.0) / n - 1.0;
        s2 += x * x;
        s4 += x * x * x * x;
        y0 += values[i];
        y1 += values[i] * x;
        y2 += values[i] * x * x;
    }
    const double bend = (n * y2 - s2 * y0) / (n * s4 - s2 * s2);
    return {(y0 - bend * s2) / n, y1 / s2, bend};
}

} // namespace

ToneMeter::ToneMeter(double toneFrequency, double deviceRate, double peak)
    : frequency(toneFrequency), rate(deviceRate), amplitude(peak),
      ownStep(2.0 * peak * std::sin(pi * toneFrequency / deviceRate)),
      turn(std::polar(1.0, -2.0 * pi * toneFrequency / deviceRate)),
      window(static_cast<std::size_t>(deviceRate / blocksPerSecond)) {
    // Without a window the tone's mirror frequency would blur the phase.
    for (std::size_t i = 0; i < window.size(); ++i) {
        const double part = (static_cast<double>(i) + 0.5) / static_cast<double>(window.size());
        window[i] = 0.5 - 0.5 * std::cos(2.0 * pi * part);
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
    if (std::abs(sample) < silence) {
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
        beganAt = static_cast<double>(count) / rate - 0.22 * fadeIn;
    }
}

void ToneMeter::FinishBlock() {
    const double middle =
        (static_cast<double>(count) - static_cast<double>(inBlock + 1) / 2.0) / rate;
    if (HasBegun() && middle > beganAt + fadeIn) {
        // A sine has its zero phase a quarter turn before the cosine of the sum.
        const double cycles = std::arg(sum) / (2.0 * pi) + 0.25 + frequency * middle;
        const double guess = heard.empty() ? (middle - beganAt) * frequency
                                           : heard.back() * frequency + frequency / blocksPerSecond;
        if (heard.empty()) {
            firstHeardAt = middle;
        }
        heard.push_back((cycles + std::round(guess - cycles)) / frequency);
    }
    sum = {};
    inBlock = 0;
    oscillator /= std::abs(oscillator);
    const auto kept = static_cast<std::size_t>(rate);
    if (recent.size() > 8 * kept) {
        recent.erase(recent.begin(), recent.end() - static_cast<std::ptrdiff_t>(kept));
    }
}

double ToneMeter::Sinad() const {
    constexpr std::size_t blocks = 5;
    const std::size_t length = window.size() * blocks;
    if (heard.size() < blocks || recent.size() < length + inBlock) {
        return 0.0;
    }
    const std::span<const float> sound = std::span(recent).last(length + inBlock).first(length);
    const Parabola phase = FitParabola(std::span(heard).last(blocks));
    const auto reference = [&](std::size_t i) {
        const double x = (2.0 * static_cast<double>(i) + 1.0) / static_cast<double>(length) - 1.0;
        return std::polar(1.0, 2.0 * pi * frequency * (phase.At(x) - phase.constant));
    };
    // The least squares fit of a cosine and a sine at the reference's phase.
    double cc = 0.0;
    double cs = 0.0;
    double ss = 0.0;
    double cy = 0.0;
    double sy = 0.0;
    double power = 0.0;
    for (std::size_t i = 0; i < length; ++i) {
        const std::complex<double> wave = reference(i);
        const double y = sound[i];
        cc += wave.real() * wave.real();
        cs += wave.real() * wave.imag();
        ss += wave.imag() * wave.imag();
        cy += wave.real() * y;
        sy += wave.imag() * y;
        power += y * y;
    }
    const double determinant = cc * ss - cs * cs;
    const double cosine = (cy * ss - sy * cs) / determinant;
    const double sine = (sy * cc - cy * cs) / determinant;
    double noise = 0.0;
    for (std::size_t i = 0; i < length; ++i) {
        const std::complex<double> wave = reference(i);
        const double difference = sound[i] - cosine * wave.real() - sine * wave.imag();
        noise += difference * difference;
    }
    return 10.0 * std::log10(power / noise);
}

} // namespace tonebridge::test
