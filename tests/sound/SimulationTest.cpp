#include "sound/Player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <optional>
#include <random>
#include <string>

namespace tonebridge::test {

namespace {

constexpr double Never = std::numeric_limits<double>::infinity();
constexpr double SettlingTime = 600.0; // s that the controller has before it is measured

// With SOUND_SOAK set every story runs with every callback size, device rate and
// clock error, the long ones for an hour, and with as many seeds as it says.
unsigned SoakSeeds() {
    const char* const seeds = std::getenv("SOUND_SOAK");
    return seeds == nullptr ? 0U : static_cast<unsigned>(std::max(1, std::atoi(seeds)));
}

// A receiver, a network and a sound card, all times in seconds.
struct Scenario {
    double length = 60.0;
    double clockError = 200e-6; // of the receiver's clock, 1e-6 is one part per million
    double jitter = 0.0;        // each frame is late by up to this, evenly spread
    double tone = 1000.0;       // Hz
    std::uint32_t callback = 512;
    std::uint32_t deviceRate = 48000;
    std::int64_t rate = 12000; // Hz, the receiver's, as it says
    std::uint32_t seed = 1;
    double troubleEvery = Never; // the three below happen then
    double stall = 0.0;
    bool isStallLost = false; // what the receiver sends meanwhile comes later, or never
    double burst = 0.0;       // sound that comes at once
};

// What must be reached.
struct Bars {
    double underruns = 0.0;
    double trims = 0.0;
    double longestGap = 0.0;    // s
    double fillTolerance = 1.0; // s, of the mean fill
    double lowestFill = 0.0;    // s
    double errorRms = Never;    // ppm
    double sinad = 0.0;         // dB
};

void Check(const std::string& what, double value, double least, double most) {
    std::cout << ", " << what << ' ' << value;
    EXPECT_TRUE(least <= value && value <= most) << what << ' ' << value;
}

// Runs the engine through a scenario. The same scenario gives the same outcome.
class Simulation : Player {
  public:
    explicit Simulation(const Scenario& scenario) : scene(scenario), random(scenario.seed) {
        tone = scene.tone;
        rate = scene.rate;
        callback = scene.callback;
        Open(scene.deviceRate);
        Begin();
        arrival = NextArrival();
    }

    void Run(const Bars& bars) {
        constexpr double Piece = 10.0; // s
        double sinad = Never;
        for (double nextSinad = std::min(SettlingTime, scene.length / 2.0); clock < scene.length;) {
            const auto sound = Play(Piece, [this](double time) { DeliverUntil(time); });
            meter.Add(sound);
            if (clock >= nextSinad) {
                nextSinad += 60.0;
                const std::span<const float> end = std::span(sound).last(deviceRate / 4);
                sinad = std::min(sinad, Sinad(end, tone, deviceRate));
            }
        }
        Check("underruns", static_cast<double>(engine.Underruns()), bars.underruns, bars.underruns);
        Check("trims", static_cast<double>(engine.Trims()), 0.0, bars.trims);
        Check("step", meter.LargestStep(), 0.0, 1.05);
        Check("SINAD", sinad, bars.sinad, Never);
        Check("gaps", static_cast<double>(meter.Gaps().size()), bars.underruns, bars.underruns);
        for (const double gap : meter.Gaps()) {
            Check("gap", gap, 0.0, bars.longestGap);
        }
        if (scene.length > SettlingTime && meter.Gaps().empty()) {
            MeasureFill(bars);
            MeasureRate(bars);
        }
    }

  private:
    // For each 10 ms of the tone its arrival and its sound.
    static constexpr std::size_t NotesPerSecond = 100;

    void DeliverUntil(double time) {
        constexpr std::size_t FrameSize = 512;
        while (arrival <= time) {
            clock = arrival;
            if (!isFrameLost) {
                Push(source.Next(FrameSize + static_cast<std::size_t>(std::exchange(burst, 0.0) *
                                                                      static_cast<double>(rate))));
            }
            while (static_cast<double>(arrivedAt.size()) / NotesPerSecond <= source.Seconds()) {
                arrivedAt.push_back(arrival);
            }
            sent += FrameSize;
            arrival = NextArrival();
        }
    }

    double NextArrival() {
        const double trueRate = static_cast<double>(rate) * (1.0 + scene.clockError);
        const double late = std::uniform_real_distribution<double>(0.0, scene.jitter)(random);
        const double time = std::max(arrival, static_cast<double>(sent) / trueRate + late);
        if (time >= nextTrouble) {
            stallUntil = nextTrouble + scene.stall;
            burst = scene.burst;
            nextTrouble += scene.troubleEvery;
        }
        isFrameLost = scene.isStallLost && time < stallUntil;
        return isFrameLost ? time : std::max(time, stallUntil);
    }

    // The fill is the delay between arrival and sound.
    void MeasureFill(const Bars& bars) const {
        constexpr std::size_t Window = 10 * NotesPerSecond;
        const std::vector<double>& heardAt = meter.HeardAt();
        double lowest = Never;
        double lowestMean = Never;
        double highestMean = 0.0;
        for (auto i = static_cast<std::size_t>(SettlingTime) * NotesPerSecond;
             i + Window <= heardAt.size(); i += Window) {
            double sum = 0.0;
            for (std::size_t k = i; k < i + Window; ++k) {
                const double fill = heardAt[k] - arrivedAt[k];
                lowest = std::min(lowest, fill);
                sum += fill;
            }
            lowestMean = std::min(lowestMean, sum / Window);
            highestMean = std::max(highestMean, sum / Window);
        }
        Check("lowest fill", lowest, bars.lowestFill, 1.0);
        Check("lowest mean", lowestMean, 1.0 - bars.fillTolerance, Never);
        Check("highest mean", highestMean, 0.0, 1.0 + bars.fillTolerance);
    }

    // The rate of play beside the receiver's true rate, in parts per million.
    void MeasureRate(const Bars& bars) const {
        const std::vector<double>& heardAt = meter.HeardAt();
        std::optional<double> before;
        double largest = 0.0;
        double largestSlew = 0.0;
        double squares = 0.0;
        double settled = 0.0;
        for (std::size_t i = 2 * NotesPerSecond; i < heardAt.size(); i += NotesPerSecond) {
            const double correction =
                (1.0 / (heardAt[i] - heardAt[i - NotesPerSecond]) - 1.0) * 1e6;
            largest = std::max(largest, std::abs(correction));
            largestSlew = std::max(largestSlew, std::abs(correction - before.value_or(correction)));
            before = correction;
            if (heardAt[i] > SettlingTime) {
                squares += std::pow(correction - scene.clockError * 1e6, 2.0);
                ++settled;
            }
        }
        Check("rms error", std::sqrt(squares / settled), 0.0, bars.errorRms);
        Check("correction", largest, 0.0, 1000.0);
        Check("slew", largestSlew, 0.0, 20.1);
    }

    const Scenario scene;
    std::mt19937 random;
    ToneMeter meter{scene.tone, static_cast<double>(scene.deviceRate)};
    std::uint64_t sent = 512; // samples at the end of the frame that comes next
    double arrival = 0.0;
    double stallUntil = 0.0;
    double nextTrouble = scene.troubleEvery;
    double burst = 0.0;
    bool isFrameLost = false;
    std::vector<double> arrivedAt;
};

std::vector<Scenario> Variants(const Scenario& scene) {
    std::vector<Scenario> all;
    for (unsigned i = 0; i < 12 * SoakSeeds(); ++i) {
        Scenario& variant = all.emplace_back(scene);
        variant.callback = std::array{300U, 512U, 1024U}[i % 3];
        variant.deviceRate = i / 3 % 2 == 0 ? 48000 : 44100;
        variant.clockError = i / 6 % 2 == 0 ? 200e-6 : -200e-6;
        variant.seed = i / 12 + 1;
        variant.tone = (i / 6 + variant.seed) % 2 == 0 ? 3000.0 : 1000.0;
        variant.length = scene.length > 100.0 ? 3600.0 : scene.length;
    }
    return all.empty() ? std::vector{scene} : all;
}

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
         {.fillTolerance = 0.06, .errorRms = SoakSeeds() > 0 ? 15.0 : 18.0}},
        {"StallsOfThreeQuartersOfASecond",
         {.length = 300.0, .callback = 1024, .troubleEvery = 60.0, .stall = 0.75},
         {.trims = 9.0}},
        {"ALongStall",
         {.troubleEvery = 40.0, .stall = 2.5},
         {.underruns = 1.0, .trims = 1.0, .longestGap = 1.6}},
        {"ALongStallThatLosesItsSound",
         {.troubleEvery = 40.0, .stall = 2.5, .isStallLost = true},
         {.underruns = 1.0, .trims = 1.0, .longestGap = 2.6}},
        {"ABurst", {.troubleEvery = 40.0, .burst = 2.0}, {.trims = 1.0}},
        {"AWiderReceiver", {.tone = 3000.0, .deviceRate = 44100, .rate = 20250}, {.sinad = 90.0}},
        {"AReceiverOfTheDevicesRate", {.callback = 1024, .rate = 48000}, {.sinad = 60.0}},
        {"AReceiverFasterThanTheDevice", {.deviceRate = 44100, .rate = 96000}, {.sinad = 60.0}},
    };
    return stories;
}

class SoundSimulation : public ::testing::TestWithParam<Story> {};

// Without a click, whatever happens.
TEST_P(SoundSimulation, ReachesItsBars) {
    for (const Scenario& scene : Variants(GetParam().scene)) {
        std::cout << scene.length << " s, " << scene.clockError * 1e6 << " ppm, tone " << scene.tone
                  << " Hz, " << scene.rate << " to " << scene.deviceRate << " Hz, callback "
                  << scene.callback << ", seed " << scene.seed;
        Simulation(scene).Run(GetParam().bars);
        std::cout << std::endl;
    }
}

INSTANTIATE_TEST_SUITE_P(Stories, SoundSimulation, ::testing::ValuesIn(Stories()),
                         [](const auto& story) { return story.param.what; });

} // namespace

} // namespace tonebridge::test
