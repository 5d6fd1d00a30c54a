#include "demo/Programme.h"

#include "demo/Noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

namespace larkspool::demo {
namespace {

// A note's height in semitones above middle C, and its length in beats.
struct Note {
    int semitone;
    double beats;
};

// "Are you sleeping", a traditional round.
constexpr std::array<Note, 32> Round{{{0, 1},  {2, 1},  {4, 1},  {0, 1},  {0, 1}, {2, 1}, {4, 1},
                                      {0, 1},  {4, 1},  {5, 1},  {7, 2},  {4, 1}, {5, 1}, {7, 2},
                                      {7, .5}, {9, .5}, {7, .5}, {5, .5}, {4, 1}, {0, 1}, {7, .5},
                                      {9, .5}, {7, .5}, {5, .5}, {4, 1},  {0, 1}, {0, 1}, {-5, 1},
                                      {0, 2},  {0, 1},  {-5, 1}, {0, 2}}};

// The hymn to joy, two lines of it.
constexpr std::array<Note, 30> Hymn{
    {{4, 1}, {4, 1}, {5, 1},   {7, 1},  {7, 1}, {5, 1}, {4, 1}, {2, 1},   {0, 1},  {0, 1},
     {2, 1}, {4, 1}, {4, 1.5}, {2, .5}, {2, 2}, {4, 1}, {4, 1}, {5, 1},   {7, 1},  {7, 1},
     {5, 1}, {4, 1}, {2, 1},   {0, 1},  {0, 1}, {2, 1}, {4, 1}, {2, 1.5}, {0, .5}, {0, 2}}};

constexpr double BeatSeconds = 0.5;

std::vector<Sample> RenderTune(std::span<const Note> notes, double middleC) {
    std::vector<Sample> out;
    for (const Note& note : notes) {
        const double hertz = middleC * std::exp2(note.semitone / 12.0);
        const auto count = static_cast<std::size_t>(note.beats * BeatSeconds * Programme::Rate);
        for (std::size_t i = 0; i < count; ++i) {
            const double t = static_cast<double>(i) / Programme::Rate;
            const double left = static_cast<double>(count - i) / Programme::Rate;
            const double shape =
                std::min({1.0, t / 0.01, left / 0.02}) * (0.35 + 0.65 * std::exp(-t / 0.25));
            const double angle = Turn * hertz * t;
            const double sound =
                std::sin(angle) + 0.4 * std::sin(2.0 * angle) + 0.2 * std::sin(3.0 * angle);
            out.emplace_back(static_cast<float>(shape * sound), 0.0F);
        }
    }
    return out;
}

struct Vowel {
    double first, second, third; // resonances in Hz
};

constexpr std::array<Vowel, 7> Vowels{{{730, 1090, 2440},
                                       {530, 1840, 2480},
                                       {270, 2290, 3010},
                                       {570, 840, 2410},
                                       {300, 870, 2240},
                                       {660, 1720, 2410},
                                       {490, 1350, 1690}}};

double Resonance(double hertz, double center, double width) {
    const double off = (hertz - center) / width;
    return 1.0 / (1.0 + off * off);
}

double Loudness(double hertz, const Vowel& vowel) {
    return Resonance(hertz, vowel.first, 90.0) + 0.5 * Resonance(hertz, vowel.second, 120.0) +
           0.25 * Resonance(hertz, vowel.third, 160.0);
}

Vowel Between(const Vowel& from, const Vowel& to, double share) {
    return {std::lerp(from.first, to.first, share), std::lerp(from.second, to.second, share),
            std::lerp(from.third, to.third, share)};
}

// The harmonics of a voice with their loudness. Their phases are spread, so that the sum has no
// sharp peaks and sounds as loud as it may.
void FindHarmonics(double hertz, const Vowel& vowel, std::vector<Sample>& harmonics) {
    constexpr double Highest = 3400.0;
    harmonics.clear();
    for (double number = 1.0; number * hertz < Highest; number += 1.0) {
        const double phase = std::numbers::pi * number * number * hertz / Highest;
        harmonics.emplace_back(
            std::polar(Loudness(number * hertz, vowel), std::remainder(phase, Turn)));
    }
}

// The voiced part of a syllable, gliding from one vowel to the next, as a sum of harmonics that all
// turn the same way.
void AddVoice(std::span<Sample> out, double pitch, const Vowel& from, const Vowel& to) {
    constexpr std::size_t Step = 256; // samples between two looks at the vowel
    double phase = 0.0;
    std::vector<Sample> harmonics;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(out.size());
        const double hertz = pitch * (1.08 - 0.16 * share);
        if (i % Step == 0) {
            FindHarmonics(hertz, Between(from, to, share), harmonics);
        }
        phase = std::fmod(phase + Turn * hertz / Programme::Rate, Turn);
        const Sample first = std::polar(1.0F, static_cast<float>(phase));
        Sample power = first;
        for (const Sample& harmonic : harmonics) {
            out[i] += Times(harmonic, power);
            power = Times(power, first);
        }
    }
}

// A hiss in front of the voice, as of an s. Two resonances in a row leave nothing of it far above
// and below.
void AddHiss(std::span<Sample> out, std::uint64_t seed) {
    constexpr double CenterHertz = 2700.0;
    constexpr double DecaySeconds = 0.0005;
    constexpr auto Narrowness = static_cast<float>(1.0 - 1.0 / (DecaySeconds * Programme::Rate));
    constexpr float Loudness = 0.08F * (1.0F - Narrowness);
    Noise noise(seed);
    const Sample turning =
        std::polar(Narrowness, static_cast<float>(Turn * CenterHertz / Programme::Rate));
    Sample first{};
    Sample second{};
    for (Sample& sample : out) {
        first = Times(first, turning) + Sample{noise.Next(), 0.0F};
        second = Times(second, turning) + first;
        sample += Loudness * second;
    }
}

// Rises and falls softly, and brings each syllable to the same peak.
void Shape(std::span<Sample> syllable) {
    constexpr double Edge = 0.25; // share of the length at either end
    float loudest = 1.0e-9F;
    for (std::size_t i = 0; i < syllable.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(syllable.size());
        const double rise = std::min(1.0, std::min(share, 1.0 - share) / Edge);
        syllable[i] *= static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * rise));
        loudest = std::max(loudest, std::abs(syllable[i]));
    }
    for (Sample& sample : syllable) {
        sample /= loudest;
    }
}

std::size_t Samples(double seconds) { return static_cast<std::size_t>(seconds * Programme::Rate); }

// Phrases of a few syllables each, whose pitch sinks towards the end.
std::vector<Sample> RenderVoice(double pitch, std::uint64_t seed) {
    constexpr double Length = 16.0; // seconds
    constexpr std::size_t LongestPhrase = 9;
    std::vector<Sample> out(Samples(Length));
    std::size_t at = 0;
    std::size_t left = 5; // syllables until the phrase ends
    for (std::uint64_t number = 0;; ++number) {
        const std::uint64_t bits = Scramble(seed, number);
        const std::size_t count = Samples(0.12 + 0.15 * Fraction(bits));
        if (at + count > out.size()) {
            return out;
        }
        const double sinking = 0.92 + 0.02 * static_cast<double>(left);
        const double lift = sinking + 0.2 * (Fraction(Scramble(bits, 1)) - 0.5);
        const auto sounding = std::span(out).subspan(at, count);
        AddVoice(sounding, pitch * lift, Vowels[bits % Vowels.size()],
                 Vowels[(bits >> 8) % Vowels.size()]);
        if (bits % 3 == 0) {
            AddHiss(sounding.first(count / 3), Scramble(bits, 2));
        }
        Shape(sounding);
        at += count;
        if (--left > 0) {
            at += Samples(0.02);
        } else {
            left = 3 + (bits >> 16) % (LongestPhrase - 2);
            at += Samples(0.25 + 0.9 * Fraction(Scramble(bits, 3)));
        }
    }
}

} // namespace

Programme::Programme(Kind kind, std::uint64_t seed) {
    constexpr double MiddleC = 261.63;
    switch (kind) {
    case Kind::FirstTune:
        samples = RenderTune(Round, 2.0 * MiddleC);
        break;
    case Kind::SecondTune:
        samples = RenderTune(Hymn, 1.5 * MiddleC);
        break;
    case Kind::DeepVoice:
        samples = RenderVoice(115.0, seed);
        break;
    case Kind::HighVoice:
        samples = RenderVoice(205.0, seed + 1);
        break;
    }
    FinishLoop();
}

void Programme::FinishLoop() {
    float loudest = 1e-9F;
    double mean = 0.0;
    for (const Sample& sample : samples) {
        loudest = std::max(loudest, std::abs(sample));
        mean += sample.real();
    }
    mean /= static_cast<double>(samples.size());
    double sum = 0.0;
    sums.reserve(samples.size());
    for (Sample& sample : samples) {
        sample = (sample - Sample{static_cast<float>(mean), 0.0F}) / loudest;
        sums.push_back(static_cast<float>(sum));
        sum += sample.real() / Rate;
    }
}

Sample Programme::At(double seconds) const {
    const double place = seconds * Rate;
    const auto whole = static_cast<std::size_t>(place);
    const auto share = static_cast<float>(place - static_cast<double>(whole));
    const Sample& from = samples[whole % samples.size()];
    return from + share * (samples[(whole + 1) % samples.size()] - from);
}

float Programme::SumAt(double seconds) const {
    const double place = seconds * Rate;
    const auto whole = static_cast<std::size_t>(place);
    const auto share = static_cast<float>(place - static_cast<double>(whole));
    const float from = sums[whole % sums.size()];
    return from + share * (sums[(whole + 1) % sums.size()] - from);
}

} // namespace larkspool::demo
