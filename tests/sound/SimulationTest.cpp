#include "sound/ToneMeter.h"
#include "tonebridge/Engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace tonebridge::test {

namespace {

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

// What was measured, from the sound that came out unless said otherwise.
struct Outcome {
    std::uint64_t underruns = 0; // the engine's count
    std::uint64_t trims = 0;     // the engine's count
    std::vector<double> gaps;    // s
    double largestStep = 0.0;    // times the tone's own
    double lowestSinad = 0.0;    // dB, over seconds of sound after the settling time
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
    explicit Simulation(const Scenario& scenario) : scene(scenario), random(scenario.seed) {
        engine.SetDeviceRate(scene.deviceRate);
    }

    Outcome Run() {
        Outcome outcome;
        outcome.lowestSinad = std::numeric_limits<double>::infinity();
        std::vector<float> sound(scene.callback);
        double nextSinad = std::min(SettlingTime, scene.length / 2.0);
        const std::vector<std::int16_t> silence(static_cast<std::size_t>(NominalRate));
        engine.Push(Engine::NewStream, silence.data(), NominalRate);
        Push(silence);
        arrival = NextArrival();
        for (std::uint64_t done = 0;; done += scene.callback) {
            const double time = static_cast<double>(done) / scene.deviceRate;
            if (time >= scene.length) {
                break;
            }
            DeliverUntil(time);
            clock = time;
            engine.Render(sound);
            meter.Add(sound);
            if (time >= nextSinad) {
                outcome.lowestSinad = std::min(outcome.lowestSinad, meter.Sinad());
                nextSinad += 60.0;
            }
        }
        outcome.underruns = engine.Underruns();
        outcome.trims = engine.Trims();
        outcome.gaps = meter.Gaps();
        outcome.largestStep = meter.LargestStep();
        if (scene.length > SettlingTime && outcome.gaps.empty()) {
            MeasureFill(outcome);
            MeasureRate(outcome);
        }
        return outcome;
    }

  private:
    // The first ten minutes belong to the controller.
    static constexpr double SettlingTime = 600.0;
    static constexpr std::int64_t NominalRate = 12000;
    static constexpr std::size_t FrameSize = 512;
    static constexpr double NoteInterval = 0.01;
    static constexpr std::size_t NotesPerSecond = 100;

    double Uniform() { return std::uniform_real_distribution<double>(0.0, 1.0)(random); }

    void Push(const std::vector<std::int16_t>& block) {
        engine.Push(static_cast<std::int64_t>(block.size()), block.data(), NominalRate);
    }

    void DeliverUntil(double time) {
        while (arrival <= time) {
            NoteFill(arrival);
            clock = arrival;
            if (!isFrameLost) {
                Push(source.Next(FrameSize));
            }
            if (!isBurstOver && arrival >= scene.burstAt) {
                isBurstOver = true;
                Push(source.Next(static_cast<std::size_t>(scene.burstLength * NominalRate)));
            }
            arrival = NextArrival();
        }
        NoteFill(time);
    }

    double NextArrival() {
        const double trueRate = NominalRate * (1.0 + scene.clockError);
        const double made = static_cast<double>(++frames * FrameSize) / trueRate;
        double time = std::max(arrival, made + scene.jitter * Uniform());
        if (scene.stallEvery > 0.0 && time >= nextStall) {
            stallUntil = nextStall + scene.stallLength * Uniform();
            nextStall += scene.stallEvery;
        }
        time = std::max(time, stallUntil);
        const bool isOut = time >= scene.outageAt && time < scene.outageAt + scene.outageLength;
        isFrameLost = isOut && scene.isOutageLost;
        return isOut && !isFrameLost ? scene.outageAt + scene.outageLength : time;
    }

    void NoteFill(double time) {
        while (static_cast<double>(arrived.size()) * NoteInterval < time) {
            arrived.push_back(source.Seconds());
        }
    }

    void MeasureFill(Outcome& outcome) const {
        const std::vector<double>& heard = meter.Heard();
        // The meter's value is for the middle of its 10 ms, a note for their end.
        const auto shift =
            static_cast<std::size_t>(std::lround(meter.FirstHeardAt() / NoteInterval));
        const double early = static_cast<double>(shift) * NoteInterval - meter.FirstHeardAt();
        const auto fillAt = [&](std::size_t i) { return arrived[i + shift] - (heard[i] + early); };
        const std::size_t end = std::min(heard.size(), arrived.size() - shift);
        const std::size_t window = 10 * NotesPerSecond;
        outcome.lowestFill = outcome.lowestMeanFill = std::numeric_limits<double>::infinity();
        for (auto i = static_cast<std::size_t>(SettlingTime / NoteInterval); i + window <= end;
             i += window) {
            double sum = 0.0;
            for (std::size_t k = i; k < i + window; ++k) {
                sum += fillAt(k);
                outcome.lowestFill = std::min(outcome.lowestFill, fillAt(k));
            }
            const double mean = sum / static_cast<double>(window);
            outcome.lowestMeanFill = std::min(outcome.lowestMeanFill, mean);
            outcome.highestMeanFill = std::max(outcome.highestMeanFill, mean);
        }
    }

    void MeasureRate(Outcome& outcome) const {
        const std::vector<double>& heard = meter.Heard();
        double last = 0.0;
        double squares = 0.0;
        std::size_t settled = 0;
        for (std::size_t i = NotesPerSecond; i < heard.size(); i += NotesPerSecond) {
            const double correction = (heard[i] - heard[i - NotesPerSecond] - 1.0) * 1e6;
            outcome.largestCorrection = std::max(outcome.largestCorrection, std::abs(correction));
            if (i > NotesPerSecond) {
                outcome.largestSlew = std::max(outcome.largestSlew, std::abs(correction - last));
            }
            last = correction;
            if (static_cast<double>(i) * NoteInterval > SettlingTime) {
                const double error = correction - scene.clockError * 1e6;
                squares += error * error;
                ++settled;
            }
        }
        outcome.errorRms =
            std::sqrt(squares / static_cast<double>(std::max<std::size_t>(settled, 1)));
    }

    const Scenario scene;
    std::mt19937 random;
    double clock = 0.0;
    Engine engine{[this] { return static_cast<std::int64_t>(clock * 1e9); }};
    ToneSource source{scene.tone, NominalRate};
    ToneMeter meter{scene.tone, static_cast<double>(scene.deviceRate), 0.5};
    std::uint64_t frames = 0;
    double arrival = 0.0;
    double stallUntil = 0.0;
    double nextStall = scene.stallEvery;
    bool isFrameLost = false;
    bool isBurstOver = false;
    std::vector<double> arrived; // s of tone, one value for each 10 ms
};

// With SOUND_SOAK set every scenario runs for an hour, with every callback
// size, device rate and clock error, and with as many seeds as it says.
int SoakSeeds() {
    const char* const seeds = std::getenv("SOUND_SOAK");
    return seeds == nullptr ? 0 : std::max(1, std::atoi(seeds));
}

// The scenarios as they stand, or all variants of the first: for an hour if it is long, and in
// every seed with the first one's tone for a receiver that is fast and the last one's for a slow
// one, or the other way round.
std::vector<Scenario> Variants(const std::vector<Scenario>& quick, bool isLong) {
    std::vector<Scenario> all;
    for (int seed = 1; seed <= SoakSeeds(); ++seed) {
        for (const std::uint32_t callback : {300U, 512U, 1024U}) {
            for (const std::uint32_t rate : {48000U, 44100U}) {
                for (const double clockError : {200e-6, -200e-6}) {
                    Scenario variant = quick.front();
                    const bool isLast = (clockError < 0.0) == (seed % 2 == 1);
                    variant.tone = isLast ? quick.back().tone : variant.tone;
                    variant.length = isLong ? 3600.0 : variant.length;
                    variant.callback = callback;
                    variant.deviceRate = rate;
                    variant.clockError = clockError;
                    variant.seed = static_cast<std::uint32_t>(seed);
                    all.push_back(variant);
                }
            }
        }
    }
    return all.empty() ? quick : all;
}

void Print(const std::string& name, const Outcome& outcome) {
    std::cout << name << ": " << outcome.underruns << " underruns, " << outcome.trims
              << " trims, step " << outcome.largestStep << ", SINAD " << outcome.lowestSinad
              << " dB, mean fill " << outcome.lowestMeanFill << " to " << outcome.highestMeanFill
              << " s, lowest " << outcome.lowestFill << " s, error rms " << outcome.errorRms
              << " ppm, correction " << outcome.largestCorrection << " ppm, slew "
              << outcome.largestSlew << " ppm/s, gaps";
    for (const double gap : outcome.gaps) {
        std::cout << ' ' << gap;
    }
    std::cout << std::endl;
}

// Runs the variants, each of which must be without a click.
void RunAll(const std::vector<Scenario>& quick, bool isLong,
            const std::function<void(const Outcome&)>& expect) {
    for (const Scenario& scenario : Variants(quick, isLong)) {
        std::ostringstream name;
        name << scenario.length << " s, " << scenario.clockError * 1e6 << " ppm, jitter "
             << scenario.jitter << " s, tone " << scenario.tone << " Hz, callback "
             << scenario.callback << " at " << scenario.deviceRate << " Hz, seed " << scenario.seed;
        SCOPED_TRACE(name.str());
        const Outcome outcome = Simulation(scenario).Run();
        Print(name.str(), outcome);
        EXPECT_LE(outcome.largestStep, 1.05);
        expect(outcome);
    }
}

void ExpectUnbroken(const Outcome& outcome, std::uint64_t trims) {
    EXPECT_EQ(outcome.underruns, 0U);
    EXPECT_EQ(outcome.gaps.size(), 0U);
    EXPECT_EQ(outcome.trims, trims);
}

void ExpectFilled(const Outcome& outcome, double tolerance) {
    EXPECT_NEAR(outcome.lowestMeanFill, 1.0, tolerance);
    EXPECT_NEAR(outcome.highestMeanFill, 1.0, tolerance);
}

TEST(SoundSimulation, AnHourOfJitterAndDriftIsHeardWithoutAGap) {
    const Scenario fast{.length = 720.0, .clockError = 200e-6, .jitter = 0.3};
    Scenario slow = fast;
    slow.clockError = -200e-6;
    slow.tone = 3000.0;
    slow.callback = 1024;
    slow.deviceRate = 44100;
    slow.seed = 2;
    RunAll({fast, slow}, true, [](const Outcome& outcome) {
        ExpectUnbroken(outcome, 0);
        ExpectFilled(outcome, 0.1);
        EXPECT_GE(outcome.lowestFill, 0.75);
        EXPECT_LE(outcome.errorRms, 50.0);
        EXPECT_LE(outcome.largestCorrection, 1000.0);
        EXPECT_LE(outcome.largestSlew, 20.1);
        EXPECT_GE(outcome.lowestSinad, 90.0);
    });
}

TEST(SoundSimulation, DriftAloneIsFollowedClosely) {
    // The beginning leaves a slow tail, which weighs more in a short run.
    const double highestError = SoakSeeds() > 0 ? 15.0 : 18.0;
    const Scenario quick{.length = 720.0, .clockError = -200e-6, .callback = 300};
    RunAll({quick}, true, [&](const Outcome& outcome) {
        ExpectUnbroken(outcome, 0);
        ExpectFilled(outcome, 0.06);
        EXPECT_LE(outcome.errorRms, highestError);
    });
}

TEST(SoundSimulation, StallsOfThreeQuartersOfASecondAreNotHeard) {
    Scenario quick{.length = 300.0, .clockError = 200e-6, .callback = 1024};
    quick.stallEvery = 60.0;
    quick.stallLength = 0.75;
    RunAll({quick}, true, [](const Outcome& outcome) {
        EXPECT_EQ(outcome.underruns, 0U);
        EXPECT_EQ(outcome.gaps.size(), 0U);
    });
}

TEST(SoundSimulation, ALongStallCostsOneSilence) {
    Scenario quick{.length = 60.0, .clockError = 200e-6};
    quick.outageAt = 20.0;
    quick.outageLength = 2.5;
    for (const bool isLost : {false, true}) {
        quick.isOutageLost = isLost;
        RunAll({quick}, false, [&](const Outcome& outcome) {
            EXPECT_EQ(outcome.underruns, 1U);
            EXPECT_LE(outcome.trims, 1U);
            ASSERT_EQ(outcome.gaps.size(), 1U);
            EXPECT_LE(outcome.gaps[0], isLost ? 2.6 : 1.6) << isLost;
        });
    }
}

TEST(SoundSimulation, ABurstIsCutBackWithoutAGap) {
    const Scenario quick{.length = 60.0, .clockError = 200e-6, .burstAt = 20.0, .burstLength = 2.0};
    RunAll({quick}, false, [](const Outcome& outcome) { ExpectUnbroken(outcome, 1); });
}

} // namespace

} // namespace tonebridge::test
