#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

namespace tonebridge::test {

// A tone as a receiver sends it, at half of full scale unless it is asked for more.
class ToneSource {
  public:
    // Seconds over which it swells at its beginning, along 3x² - 2x³, so that its
    // onset isn't a click of its own.
    static constexpr double FadeIn = 0.02;

    ToneSource(double frequency, double sampleRate)
        : turn(2.0 * std::numbers::pi * frequency / sampleRate), rate(sampleRate) {}

    std::vector<std::int16_t> Next(std::size_t count, double amplitude = 16384.0);
    double Seconds() const { return static_cast<double>(made) / rate; } // made so far

  private:
    double turn;
    double rate;
    std::uint64_t made = 0;
};

// Listens to a tone and says what became of it: clicks, gaps, purity, and how
// far into the tone the sound has come. It looks at the samples alone.
class ToneMeter {
  public:
    // In Hz; `peak` is the tone's amplitude. The frequency is a multiple of 100 Hz.
    ToneMeter(double toneFrequency, double deviceRate, double peak);

    void Add(std::span<const float> samples);

    // The largest step between neighbours, as a multiple of the tone's own largest.
    double LargestStep() const { return largestStep / ownStep; }
    double Peak() const { return highest; }
    // Silences of more than 5 ms since the tone began, in seconds.
    const std::vector<double>& Gaps() const { return gaps; }
    // Seconds of the tone that have been heard, one value for each 10 ms of
    // sound, meant for its middle; valid as long as nothing is cut out.
    const std::vector<double>& Heard() const { return heard; }
    // When the first value of Heard was, in seconds.
    double FirstHeardAt() const { return firstHeardAt; }
    // Signal to noise and distortion over the last full twentieth of a second, in
    // dB, beside a tone whose pitch may glide evenly.
    double Sinad() const;

  private:
    bool HasBegun() const { return beganAt >= 0.0; }
    void Look(float sample);
    void FinishBlock();

    const double frequency;
    const double rate;
    const double amplitude;
    const double ownStep;
    const std::complex<double> turn;

    std::size_t count = 0;
    float last = 0.0F;
    double largestStep = 0.0;
    double highest = 0.0;
    double beganAt = -1.0;
    std::size_t silentFor = 0;
    std::vector<double> gaps;

    std::complex<double> oscillator{1.0, 0.0};
    std::complex<double> sum;
    std::vector<double> window;
    std::size_t inBlock = 0;
    std::vector<double> heard;
    double firstHeardAt = 0.0;
    std::vector<float> recent;
};

} // namespace tonebridge::test
