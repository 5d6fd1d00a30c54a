#pragma once

#include "sound/ToneMeter.h"
#include "tonebridge/Engine.h"

#include <cstdint>
#include <iosfwd>
#include <limits>
#include <random>
#include <vector>

namespace tonebridge::test {

// A receiver, a network and a sound card, all times in seconds.
struct Scenario {
    double length = 600.0;
    double clockError = 0.0; // of the receiver's clock, 1e-6 is one part per million
    double jitter = 0.0;     // each frame is late by up to this, evenly spread
    double tone = 1000.0;    // Hz, at half of full scale
    std::uint32_t callback = 512;
    std::uint32_t deviceRate = 48000;
    std::uint32_t seed = 1;
    double stallEvery = 0.0; // a stall of up to stallLength each time
    double stallLength = 0.0;
    double outageAt = std::numeric_limits<double>::infinity();
    double outageLength = 0.0;
    bool isOutageLost = false;
    double burstAt = std::numeric_limits<double>::infinity();
    double burstLength = 0.0;
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario);

// What was measured, from the sound that came out unless said otherwise.
struct Outcome {
    std::uint64_t underruns = 0; // the engine's count
    std::uint64_t trims = 0;     // the engine's count
    std::vector<double> gaps;    // s
    double largestStep = 0.0;    // times the tone's own
    double peak = 0.0;
    double lowestSinad = 0.0; // dB, over seconds of sound after the settling time
    // After the settling time: delay between arrival and sound, in seconds.
    double lowestMeanFill = 0.0; // of any 10 s
    double highestMeanFill = 0.0;
    double lowestFill = 0.0; // of any instant
    // The rate of play beside the receiver's true rate, parts per million.
    double errorRms = 0.0;
    double largestCorrection = 0.0;
    double largestSlew = 0.0; // a second
};

// Runs the engine through a scenario on a virtual clock. The same scenario
// gives the same outcome.
class Simulation {
  public:
    explicit Simulation(const Scenario& scenario);
    Outcome Run();

    // The first ten minutes belong to the controller.
    static constexpr double settlingTime = 600.0;

  private:
    static constexpr std::int64_t nominalRate = 12000;
    static constexpr std::size_t frameSize = 512;

    double Uniform() { return std::uniform_real_distribution<double>(0.0, 1.0)(random); }
    void Prime();
    void DeliverUntil(double time);
    void PushTone(std::size_t samples);
    double NextArrival();
    void NoteFill(double time);
    void MeasureFill(Outcome& outcome) const;
    void MeasureRate(Outcome& outcome) const;

    const Scenario scene;
    std::mt19937 random;
    double clock = 0.0;
    Engine engine;
    ToneMeter meter;
    std::uint64_t generated = 0; // samples that the receiver has made
    std::uint64_t frames = 0;
    double arrival = 0.0;
    double stallUntil = 0.0;
    double nextStall = 0.0;
    bool isFrameLost = false;
    bool isBurstOver = false;
    std::vector<double> arrived; // s of tone, one value for each 10 ms
};

} // namespace tonebridge::test
