#include "sound/Player.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>
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
    std::uint64_t underruns = 0;
    std::uint64_t trims = 0;
    double longestGap = 0.0;    // s
    double fillTolerance = 1.0; // s, of the mean fill
    double lowestFill = 0.0;    // s
    double errorRms = Never;    // ppm
    double sinad = 0.0;         // dB
};

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

    void Run() {
        constexpr double Piece = 10.0; // s
        for (double nextSinad = std::min(SettlingTime, scene.length / 2.0); clock < scene.length;) {
            const auto sound = Play(Piece, [this](double time) { DeliverUntil(time); });
            meter.Add(sound);
            if (clock >= nextSinad) {
                nextSinad += 60.0;
                const std::span<const float> end = std::span(sound).last(deviceRate / 4);
                lowestSinad = std::min(lowestSinad, Sinad(end, tone, deviceRate));
            }
        }
        if (HasSettled()) {
            MeasureFill();
            MeasureRate();
        }
    }

    void Expect(const Bars& bars) const {
        EXPECT_LE(meter.LargestStep(), 1.05);
        EXPECT_EQ(engine.Underruns(), bars.underruns);
        EXPECT_LE(engine.Trims(), bars.trims);
        EXPECT_EQ(meter.Gaps().size(), bars.underruns);
        for (const double gap : meter.Gaps()) {
            EXPECT_LE(gap, bars.longestGap);
        }
        EXPECT_GE(lowestSinad, bars.sinad);
        if (HasSettled()) {
            EXPECT_GE(lowestMeanFill, 1.0 - bars.fillTolerance);
            EXPECT_LE(highestMeanFill, 1.0 + bars.fillTolerance);
            EXPECT_GE(lowestFill, bars.lowestFill);
            EXPECT_LE(errorRms, bars.errorRms);
            EXPECT_LE(largestCorrection, 1000.0);
            EXPECT_LE(largestSlew, 20.1);
        }
    }

    std::string Description() const {
        std::ostringstream text;
        text << scene.length << " s, " << scene.clockError * 1e6 << " ppm, tone " << tone << " Hz, "
             << rate << " to " << deviceRate << " Hz, callback " << callback << ", seed "
             << scene.seed << ": " << engine.Underruns() << " underruns, " << engine.Trims()
             << " trims, step " << meter.LargestStep() << ", SINAD " << lowestSinad << " dB";
        for (const double gap : meter.Gaps()) {
            text << ", gap " << gap << " s";
        }
        if (HasSettled()) {
            text << ", mean fill " << lowestMeanFill << " to " << highestMeanFill << " s, lowest "
                 << lowestFill << " s, error rms " << errorRms << " ppm, correction "
                 << largestCorrection << " ppm, slew " << largestSlew << " ppm/s";
        }
        return text.str();
    }

  private:
    // For each 10 ms of the tone its arrival and its sound.
    static constexpr std::size_t NotesPerSecond = 100;

    bool HasSettled() const { return scene.length > SettlingTime && meter.Gaps().empty(); }

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
    void MeasureFill() {
        constexpr std::size_t Window = 10 * NotesPerSecond;
        const std::vector<double>& heardAt = meter.HeardAt();
        for (auto i = static_cast<std::size_t>(SettlingTime) * NotesPerSecond;
             i + Window <= heardAt.size(); i += Window) {
            double sum = 0.0;
            for (std::size_t k = i; k < i + Window; ++k) {
                const double fill = heardAt[k] - arrivedAt[k];
                lowestFill = std::min(lowestFill, fill);
                sum += fill;
            }
            lowestMeanFill = std::min(lowestMeanFill, sum / Window);
            highestMeanFill = std::max(highestMeanFill, sum / Window);
        }
    }

    // The rate of play beside the receiver's true rate.
    void MeasureRate() {
        const std::vector<double>& heardAt = meter.HeardAt();
        std::optional<double> last;
        double squares = 0.0;
        std::size_t settled = 0;
        for (std::size_t i = 2 * NotesPerSecond; i < heardAt.size(); i += NotesPerSecond) {
            const double correction =
                (1.0 / (heardAt[i] - heardAt[i - NotesPerSecond]) - 1.0) * 1e6;
            largestCorrection = std::max(largestCorrection, std::abs(correction));
            largestSlew = std::max(largestSlew, std::abs(correction - last.value_or(correction)));
            last = correction;
            if (heardAt[i] > SettlingTime) {
                squares += std::pow(correction - scene.clockError * 1e6, 2.0);
                ++settled;
            }
        }
        errorRms = std::sqrt(squares / static_cast<double>(settled));
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

    double lowestSinad = Never; // dB
    double lowestMeanFill = Never;
    double highestMeanFill = 0.0;
    double lowestFill = Never;
    double errorRms = 0.0; // ppm
    double largestCorrection = 0.0;
    double largestSlew = 0.0; // ppm a second
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
         {.trims = 9}},
        {"ALongStall",
         {.troubleEvery = 40.0, .stall = 2.5},
         {.underruns = 1, .trims = 1, .longestGap = 1.6}},
        {"ALongStallThatLosesItsSound",
         {.troubleEvery = 40.0, .stall = 2.5, .isStallLost = true},
         {.underruns = 1, .trims = 1, .longestGap = 2.6}},
        {"ABurst", {.troubleEvery = 40.0, .burst = 2.0}, {.trims = 1}},
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
        Simulation simulation(scene);
        simulation.Run();
        std::cout << simulation.Description() << std::endl;
        SCOPED_TRACE(simulation.Description());
        simulation.Expect(GetParam().bars);
    }
}

INSTANTIATE_TEST_SUITE_P(Stories, SoundSimulation, ::testing::ValuesIn(Stories()),
                         [](const auto& story) { return story.param.what; });

} // namespace

} // namespace tonebridge::test
