#include "sound/Simulation.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

namespace tonebridge::test {

namespace {

// With SOUND_SOAK set every scenario runs for an hour, with every callback
// size, device rate and clock error, and with as many seeds as it says.
int SoakSeeds() {
    const char* const seeds = std::getenv("SOUND_SOAK");
    return seeds == nullptr ? 0 : std::max(1, std::atoi(seeds));
}

// The scenario as it stands at its own length, or all its variants for an hour.
std::vector<Scenario> Variants(const Scenario& quick, bool isLong = true) {
    std::vector<Scenario> all;
    for (int seed = 1; seed <= SoakSeeds(); ++seed) {
        for (const std::uint32_t callback : {300U, 512U, 1024U}) {
            for (const std::uint32_t rate : {48000U, 44100U}) {
                for (const double clockError : {200e-6, -200e-6}) {
                    Scenario variant = quick;
                    variant.length = isLong ? 3600.0 : quick.length;
                    variant.callback = callback;
                    variant.deviceRate = rate;
                    variant.clockError = clockError;
                    variant.seed = static_cast<std::uint32_t>(seed);
                    all.push_back(variant);
                }
            }
        }
    }
    return all.empty() ? std::vector{quick} : all;
}

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    out << outcome.underruns << " underruns, " << outcome.trims << " trims, step "
        << outcome.largestStep << ", SINAD " << outcome.lowestSinad << " dB, mean fill "
        << outcome.lowestMeanFill << " to " << outcome.highestMeanFill << " s, lowest "
        << outcome.lowestFill << " s, error rms " << outcome.errorRms << " ppm, correction "
        << outcome.largestCorrection << " ppm, slew " << outcome.largestSlew << " ppm/s, gaps";
    for (const double gap : outcome.gaps) {
        out << ' ' << gap;
    }
    return out;
}

Outcome RunLoud(const Scenario& scenario) {
    Outcome outcome = Simulation(scenario).Run();
    std::cout << scenario << ": " << outcome << std::endl;
    EXPECT_LE(outcome.largestStep, 1.05);
    EXPECT_LE(outcome.peak, 1.0);
    return outcome;
}

void ExpectUnbroken(const Outcome& outcome) {
    EXPECT_EQ(outcome.underruns, 0U);
    EXPECT_EQ(outcome.gaps.size(), 0U);
}

void ExpectJitterUnheard(const Scenario& scenario) {
    SCOPED_TRACE(::testing::Message() << scenario);
    const Outcome outcome = RunLoud(scenario);
    ExpectUnbroken(outcome);
    EXPECT_EQ(outcome.trims, 0U);
    EXPECT_NEAR(outcome.lowestMeanFill, 1.0, 0.1);
    EXPECT_NEAR(outcome.highestMeanFill, 1.0, 0.1);
    EXPECT_GE(outcome.lowestFill, 0.75);
    EXPECT_LE(outcome.errorRms, 50.0);
    EXPECT_LE(outcome.largestCorrection, 1000.0);
    EXPECT_LE(outcome.largestSlew, 20.1);
    EXPECT_GE(outcome.lowestSinad, 90.0);
}

TEST(SoundSimulation, AnHourOfJitterAndDriftIsHeardWithoutAGap) {
    const Scenario quick{.length = 720.0, .clockError = 200e-6, .jitter = 0.3};
    for (Scenario scenario : Variants(quick)) {
        // Every seed hears one tone with a fast receiver and the other with a slow one.
        const bool isHigh = (scenario.clockError < 0.0) == (scenario.seed % 2 == 1);
        scenario.tone = isHigh ? 3000.0 : 1000.0;
        ExpectJitterUnheard(scenario);
    }
    if (SoakSeeds() == 0) {
        ExpectJitterUnheard({.length = 720.0,
                             .clockError = -200e-6,
                             .jitter = 0.3,
                             .tone = 3000.0,
                             .callback = 1024,
                             .deviceRate = 44100,
                             .seed = 2});
    }
}

TEST(SoundSimulation, DriftAloneIsFollowedClosely) {
    // The beginning leaves a slow tail, which weighs more in a short run.
    const double highestError = SoakSeeds() > 0 ? 15.0 : 18.0;
    const Scenario quick{.length = 720.0, .clockError = -200e-6, .callback = 300};
    for (const Scenario& scenario : Variants(quick)) {
        SCOPED_TRACE(::testing::Message() << scenario);
        const Outcome outcome = RunLoud(scenario);
        ExpectUnbroken(outcome);
        EXPECT_EQ(outcome.trims, 0U);
        EXPECT_NEAR(outcome.lowestMeanFill, 1.0, 0.06);
        EXPECT_NEAR(outcome.highestMeanFill, 1.0, 0.06);
        EXPECT_LE(outcome.errorRms, highestError);
    }
}

TEST(SoundSimulation, StallsOfThreeQuartersOfASecondAreNotHeard) {
    const Scenario quick{.length = 300.0,
                         .clockError = 200e-6,
                         .callback = 1024,
                         .stallEvery = 60.0,
                         .stallLength = 0.75};
    for (const Scenario& scenario : Variants(quick)) {
        SCOPED_TRACE(::testing::Message() << scenario);
        ExpectUnbroken(RunLoud(scenario));
    }
}

TEST(SoundSimulation, ALongStallCostsOneSilence) {
    for (const bool isLost : {false, true}) {
        const Scenario quick{.length = 60.0,
                             .clockError = 200e-6,
                             .outageAt = 20.0,
                             .outageLength = 2.5,
                             .isOutageLost = isLost};
        for (const Scenario& scenario : Variants(quick, false)) {
            SCOPED_TRACE(::testing::Message() << scenario);
            const Outcome outcome = RunLoud(scenario);
            EXPECT_EQ(outcome.underruns, 1U);
            EXPECT_LE(outcome.trims, 1U);
            ASSERT_EQ(outcome.gaps.size(), 1U);
            EXPECT_LE(outcome.gaps[0], isLost ? 2.6 : 1.6);
        }
    }
}

TEST(SoundSimulation, ABurstIsCutBackWithoutAGap) {
    const Scenario quick{.length = 60.0, .clockError = 200e-6, .burstAt = 20.0, .burstLength = 2.0};
    for (const Scenario& scenario : Variants(quick, false)) {
        SCOPED_TRACE(::testing::Message() << scenario);
        const Outcome outcome = RunLoud(scenario);
        ExpectUnbroken(outcome);
        EXPECT_EQ(outcome.trims, 1U);
    }
}

} // namespace

} // namespace tonebridge::test
