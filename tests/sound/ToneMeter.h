#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tonebridge::test {

// A tone as a receiver sends it.
class ToneSource {
  public:
    // Seconds over which it swells at its beginning, along 3x² - 2x³, so that its
    // onset isn't a click of its own.
    static constexpr double FadeIn = 0.02;

    ToneSource(double frequency, double sampleRate) : hertz(frequency), rate(sampleRate) {}

    // Half of full scale unless an amplitude is given; what exceeds full scale is cut off.
    std::vector<std::int16_t> Next(std::size_t count, double amplitude = 16384.0);
    double Seconds() const { return static_cast<double>(made) / rate; } // made so far

  private:
    double hertz;
    double rate;
    std::uint64_t made = 0;
};

// Measures a tone of half of full scale by its samples alone.
class ToneMeter {
  public:
    // The frequency is a multiple of 100 Hz.
    ToneMeter(double toneFrequency, double deviceRate) : hertz(toneFrequency), rate(deviceRate) {}

    void Add(std::span<const float> samples);

    // The largest step between neighbors, as a multiple of the tone's own largest.
    double LargestStep() const;
    double Peak() const { return highest; }
    // Silences of more than 5 ms since the tone began, in seconds.
    const std::vector<double>& Gaps() const { return gaps; }
    // When each further 10 ms of the tone was heard, in seconds since the first sample; valid as
    // long as nothing is cut out.
    const std::vector<double>& HeardAt() const { return heardAt; }

  private:
    void FindGap(float sample);
    void FindPeriod(float sample);

    double hertz;
    double rate;
    std::size_t count = 0; // samples so far
    std::size_t silentFor = 0;
    std::size_t periods = 0; // of the tone
    float last = 0.0F;
    double largestStep = 0.0;
    double highest = 0.0;
    std::vector<double> gaps;
    std::vector<double> heardAt;
};

// The amplitude of one frequency in a sound.
double Line(std::span<const float> sound, double hertz, double rate);
// Signal to noise and distortion of a tone in a quarter of a second of sound, in dB. What is within
// 40 Hz of the tone is part of it, since its pitch may glide.
double Sinad(std::span<const float> sound, double hertz, double rate);

} // namespace tonebridge::test
