#include "sound/ToneMeter.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace tonebridge::test {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Amplitude = 0.5;

// Its spectrum falls so steeply that 10 lines beside a tone nothing of it is left.
double Window(std::size_t i, std::size_t size) {
    return std::pow(std::sin(Pi * (static_cast<double>(i) + 0.5) / static_cast<double>(size)), 6.0);
}

constexpr double WindowMean = 5.0 / 16.0;

} // namespace

std::vector<std::int16_t> ToneSource::Next(std::size_t count, double amplitude) {
    std::vector<std::int16_t> block(count);
    for (std::int16_t& sample : block) {
        const double level = std::min(Seconds() / FadeIn, 1.0);
        const double height = amplitude * level * level * (3.0 - 2.0 * level);
        const double value =
            height * std::sin(2.0 * Pi * hertz / rate * static_cast<double>(made++));
        sample = static_cast<std::int16_t>(std::lrint(std::clamp(value, -32768.0, 32767.0)));
    }
    return block;
}

double ToneMeter::LargestStep() const {
    return largestStep / (2.0 * Amplitude * std::sin(Pi * hertz / rate));
}

void ToneMeter::Add(std::span<const float> samples) {
    for (const float sample : samples) {
        largestStep = std::max(largestStep, static_cast<double>(std::abs(sample - last)));
        highest = std::max(highest, static_cast<double>(std::abs(sample)));
        FindGap(sample);
        FindPeriod(sample);
        last = sample;
        ++count;
    }
}

void ToneMeter::FindGap(float sample) {
    if (std::abs(sample) < 1e-4F) {
        ++silentFor;
        return;
    }
    const double silent = static_cast<double>(silentFor) / rate;
    if (!heardAt.empty() && silent > 0.005) {
        gaps.push_back(silent);
    }
    silentFor = 0;
}

void ToneMeter::FindPeriod(float sample) {
    const double time = static_cast<double>(count) / rate;
    if (heardAt.empty() && std::abs(sample) > Amplitude / 8.0) {
        // The swelling reaches an eighth of the tone's height after some 0.22 of its time.
        constexpr double Begun = 0.22 * ToneSource::FadeIn;
        heardAt.push_back(time - Begun);
        periods = static_cast<std::size_t>(Begun * hertz);
    }
    if (!heardAt.empty() && last < 0.0F && sample >= 0.0F) {
        const auto phase = [](float value) {
            return std::asin(std::min(static_cast<double>(std::abs(value)) / Amplitude, 1.0));
        };
        const double since = phase(sample) / (phase(sample) + phase(last));
        if (static_cast<double>(++periods) >= static_cast<double>(heardAt.size()) * hertz / 100.0) {
            heardAt.push_back(time - since / rate);
        }
    }
}

double Line(std::span<const float> sound, double hertz, double rate) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double turn = -2.0 * Pi * hertz / rate * static_cast<double>(i);
        sum += std::polar(Window(i, sound.size()) * static_cast<double>(sound[i]), turn);
    }
    return std::abs(sum) * 2.0 / (WindowMean * static_cast<double>(sound.size()));
}

double Sinad(std::span<const float> sound, double hertz, double rate) {
    const auto size = static_cast<double>(sound.size());
    double power = 0.0;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        power += std::pow(Window(i, sound.size()) * static_cast<double>(sound[i]), 2.0);
    }
    double tone = 0.0;
    for (int line = -10; line <= 10; ++line) {
        tone +=
            std::pow(Line(sound, hertz + line * rate / size, rate) * WindowMean, 2.0) * size / 2.0;
    }
    return 10.0 * std::log10(tone / (power - tone));
}

} // namespace tonebridge::test
