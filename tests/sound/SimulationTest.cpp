#include "sound/ToneMeter.h"
#include "tonebridge/Engine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace tonebridge::test {

namespace {

constexpr double Never = std::numeric_limits<double>::infinity();

// With SOUND_SOAK set every story runs with every callback size, device rate and
// clock error, the long ones for an hour, and with as many seeds as it says.
int SoakSeeds() {
    const char* const seeds = std::getenv("SOUND_SOAK");
    return seeds == nullptr ? 0 : std::max(1, std::atoi(seeds));
}

bool IsSoak() { return SoakSeeds() > 0; }

// A receiver, a network and a sound card, all times in seconds.
struct Scenario {
    double length = 60.0;
    double clockError = 200e-6; // of the receiver's clock, 1e-6 is one part per million
    double jitter = 0.0;        // each frame is late by up to this, evenly spread
    double tone = 1000.0;       // Hz, at half of full scale
    std::uint32_t callback = 512;
    std::uint32_t deviceRate = 48000;
    std::int64_t rate = 12000; // Hz, the receiver's, as it says
    std::uint32_t seed = 1;
    double stallEvery = 0.0; // a stall of up to stallLength each time
    double stallLength = 0.0;
    double outageAt = Never;
    double outageLength = 0.0;
    bool isOutageLost = false;
    double burstAt = Never;
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
        engine.OpenDevice(scene.deviceRate);
    }

    Outcome Run() {
        Outcome outcome;
        outcome.lowestSinad = std::numeric_limits<double>::infinity();
        std::vector<float> sound(scene.callback);
        double nextSinad = std::min(SettlingTime, scene.length / 2.0);
        const std::vector<std::int16_t> silence(static_cast<std::size_t>(scene.rate));
        engine.Push(Engine::NewStream, silence.data(), scene.rate);
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
    static constexpr std::size_t FrameSize = 512;
    static constexpr double NoteInterval = 0.01;
    static constexpr std::size_t NotesPerSecond = 100;

    double Uniform() { return std::uniform_real_distribution<double>(0.0, 1.0)(random); }

    void Push(const std::vector<std::int16_t>& block) {
        engine.Push(static_cast<std::int64_t>(block.size()), block.data(), scene.rate);
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
                Push(source.Next(
                    static_cast<std::size_t>(scene.burstLength * static_cast<double>(scene.rate))));
            }
            arrival = NextArrival();
        }
        NoteFill(time);
    }

    double NextArrival() {
        const double trueRate = static_cast<double>(scene.rate) * (1.0 + scene.clockError);
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
    ToneSource source{scene.tone, static_cast<double>(scene.rate)};
    ToneMeter meter{scene.tone, static_cast<double>(scene.deviceRate), 0.5};
    std::uint64_t frames = 0;
    double arrival = 0.0;
    double stallUntil = 0.0;
    double nextStall = scene.stallEvery;
    bool isFrameLost = false;
    bool isBurstOver = false;
    std::vector<double> arrived; // s of tone, one value for each 10 ms
};

std::vector<Scenario> Variants(const Scenario& scene) {
    std::vector<Scenario> all;
    for (int seed = 1; seed <= SoakSeeds(); ++seed) {
        for (const std::uint32_t callback : {300U, 512U, 1024U}) {
            for (const std::uint32_t deviceRate : {48000U, 44100U}) {
                for (const double clockError : {200e-6, -200e-6}) {
                    Scenario variant = scene;
                    variant.tone = (clockError < 0.0) == (seed % 2 == 1) ? 3000.0 : 1000.0;
                    variant.length = scene.length > 100.0 ? 3600.0 : scene.length;
                    variant.callback = callback;
                    variant.deviceRate = deviceRate;
                    variant.clockError = clockError;
                    variant.seed = static_cast<std::uint32_t>(seed);
                    all.push_back(variant);
                }
            }
        }
    }
    return all.empty() ? std::vector{scene} : all;
}

std::string Describe(const Scenario& scene, const Outcome& outcome) {
    std::ostringstream text;
    text << scene.length << " s, " << scene.clockError * 1e6 << " ppm, jitter " << scene.jitter
         << " s, tone " << scene.tone << " Hz, " << scene.rate << " to " << scene.deviceRate
         << " Hz, callback " << scene.callback << ", seed " << scene.seed << ": "
         << outcome.underruns << " underruns, " << outcome.trims << " trims, step "
         << outcome.largestStep << ", SINAD " << outcome.lowestSinad << " dB, mean fill "
         << outcome.lowestMeanFill << " to " << outcome.highestMeanFill << " s, lowest "
         << outcome.lowestFill << " s, error rms " << outcome.errorRms << " ppm, correction "
         << outcome.largestCorrection << " ppm, slew " << outcome.largestSlew << " ppm/s, gaps";
    for (const double gap : outcome.gaps) {
        text << ' ' << gap;
    }
    return text.str();
}

// What must be reached.
struct Bars {
    std::uint64_t underruns = 0;
    std::uint64_t trims = 0;
    double longestGap = 0.0;    // s
    double fillTolerance = 1.0; // s, of the mean fill
    double lowestFill = 0.0;    // s
    double errorRms = Never;    // ppm
    double sinad = 0.0;         // dB
};

struct Story {
    std::string what;
    Scenario scene;
    Bars bars;
};

// Each of them once in every run of the tests.
const std::vector<Story>& Stories() {
    static const Bars jitter{
        .fillTolerance = 0.1, .lowestFill = 0.75, .errorRms = 50.0, .sinad = 90.0};
    static const std::vector<Story> stories{
        {"FastReceiverWithJitter", {.length = 720.0, .jitter = 0.3}, jitter},
        {"SlowReceiverWithJitter",
         {.length = 720.0,
          .clockError = -200e-6,
          .jitter = 0.3,
          .tone = 3000.0,
          .callback = 1024,
          .deviceRate = 44100,
          .seed = 2},
         jitter},
        // The beginning leaves a slow tail, which weighs more in a short run.
        {"DriftAlone",
         {.length = 720.0, .clockError = -200e-6, .callback = 300},
         {.fillTolerance = 0.06, .errorRms = IsSoak() ? 15.0 : 18.0}},
        {"StallsOfThreeQuartersOfASecond",
         {.length = 300.0, .callback = 1024, .stallEvery = 60.0, .stallLength = 0.75},
         {.trims = 9}},
        {"ALongStall",
         {.outageAt = 20.0, .outageLength = 2.5},
         {.underruns = 1, .trims = 1, .longestGap = 1.6}},
        {"ALongStallThatLosesItsSound",
         {.outageAt = 20.0, .outageLength = 2.5, .isOutageLost = true},
         {.underruns = 1, .trims = 1, .longestGap = 2.6}},
        {"ABurst", {.burstAt = 20.0, .burstLength = 2.0}, {.trims = 1}},
        {"AWiderReceiver", {.tone = 3000.0, .deviceRate = 44100, .rate = 20250}, {.sinad = 90.0}},
        {"AReceiverOfTheDevicesRate", {.callback = 1024, .rate = 48000}, {.sinad = 60.0}},
        {"AReceiverFasterThanTheDevice", {.deviceRate = 44100, .rate = 96000}, {.sinad = 60.0}},
    };
    return stories;
}

class SoundSimulation : public ::testing::TestWithParam<Story> {};

// Without a click, whatever happens.
TEST_P(SoundSimulation, ReachesItsBars) {
    const Bars& bars = GetParam().bars;
    for (const Scenario& scene : Variants(GetParam().scene)) {
        const Outcome outcome = Simulation(scene).Run();
        SCOPED_TRACE(Describe(scene, outcome));
        std::cout << Describe(scene, outcome) << std::endl;
        EXPECT_LE(outcome.largestStep, 1.05);
        EXPECT_EQ(outcome.underruns, bars.underruns);
        EXPECT_LE(outcome.trims, bars.trims);
        EXPECT_EQ(outcome.gaps.size(), bars.underruns);
        for (const double gap : outcome.gaps) {
            EXPECT_LE(gap, bars.longestGap);
        }
        EXPECT_GE(outcome.lowestSinad, bars.sinad);
        if (outcome.highestMeanFill > 0.0) {
            EXPECT_NEAR(outcome.lowestMeanFill, 1.0, bars.fillTolerance);
            EXPECT_NEAR(outcome.highestMeanFill, 1.0, bars.fillTolerance);
            EXPECT_GE(outcome.lowestFill, bars.lowestFill);
            EXPECT_LE(outcome.errorRms, bars.errorRms);
            EXPECT_LE(outcome.largestCorrection, 1000.0);
            EXPECT_LE(outcome.largestSlew, 20.1);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Stories, SoundSimulation, ::testing::ValuesIn(Stories()),
                         [](const auto& story) { return story.param.what; });

} // namespace

} // namespace tonebridge::test
