#include "demo/Listening.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace larkspool::demo {
namespace {

TEST(Moment, PhaseFollowsTheFrequencyOverAnyTime) {
    for (const double hertz : {1000.0, -437.5, 0.25, 14655.123}) {
        const Moment later = someTime.After(3.4567);
        const double turns = someTime.Turns(hertz) + hertz * 3.4567;
        EXPECT_NEAR(std::remainder(later.Turns(hertz) - turns, 1.0), 0.0, 1.0e-5) << hertz;
    }
    EXPECT_NEAR((Moment{61, 0.5}.Within(60.0)), 1.5, 1.0e-9);
}

TEST(Stations, StandInOrderAndLeaveTheQuietStretchAlone) {
    const auto stations = Stations();
    EXPECT_TRUE(std::ranges::is_sorted(stations, {}, &Station::khz));
    EXPECT_TRUE(std::ranges::none_of(stations, [](const Station& station) {
        return station.khz > 10021.0 && station.khz < 10130.0;
    }));
}

TEST(Antennas, HearTheSameStationDifferently) {
    Tuning tuning = TunedTo(10020.0, Mode::Am, -2500.0, 2500.0);
    std::vector<double> meters;
    for (const Antenna& antenna : Antennas()) {
        SoundStream stream(SharedBand(), antenna, 12000.0);
        stream.Tune(tuning);
        stream.Frame(someTime);
        EXPECT_NEAR(stream.SMeter(), -70.0 + antenna.GainDb(10.02e6, 0.0), 1.0) << antenna.name;
        meters.push_back(stream.SMeter());
    }
    EXPECT_NEAR(meters[0], -70.0, 0.2);
    EXPECT_GT(*std::ranges::max_element(meters) - *std::ranges::min_element(meters), 10.0);
}

TEST(Band, NoiseHasTheAntennasDensity) {
    std::vector<Sample> air(24000);
    // A stretch without lightning.
    Moment from = someTime;
    while (SharedBand().CrashFactor(Antennas()[0], from, 1.0e6) > 1.0 ||
           SharedBand().CrashFactor(Antennas()[0], from.After(0.9), 1.0e6) > 1.0) {
        from = from.After(1.0);
    }
    SharedBand().AddNoise(Antennas()[0], from, 10.1e6, 24000.0, air);
    double power = 0.0;
    for (const Sample& sample : air) {
        power += std::norm(sample);
    }
    const double dbm = 10.0 * std::log10(power / static_cast<double>(air.size()));
    EXPECT_NEAR(dbm, Antennas()[0].NoiseDbmHz(10.1e6) + 10.0 * std::log10(24000.0), 0.3);
}

TEST(Band, LightningStrikesNowAndThenAndStrongerAtLowFrequencies) {
    int struck = 0;
    double lowest = 0.0;
    double highest = 0.0;
    for (int i = 0; i < 6000; ++i) {
        const Moment at = someTime.After(0.01 * i);
        const double factor = SharedBand().CrashFactor(Antennas()[0], at, 1.0e6);
        struck += factor > 2.0 ? 1 : 0;
        lowest = std::max(lowest, factor);
        highest = std::max(highest, SharedBand().CrashFactor(Antennas()[0], at, 20.0e6));
    }
    EXPECT_GT(struck, 10);
    EXPECT_LT(struck, 1500);
    EXPECT_GT(lowest, 10.0 * highest);
}

TEST(Band, LightningOpensNoSquelchOf10DbInTheQuietStretch) {
    constexpr int looks = 9; // within the 43 ms of a frame
    for (const Antenna& antenna : Antennas()) {
        double loudest = 0.0;
        for (int frame = 0; frame < 20'000; ++frame) {
            double sum = 0.0;
            for (int look = 0; look < looks; ++look) {
                sum += SharedBand().CrashFactor(
                    antenna, someTime.After(0.0427 * frame + 0.0047 * look), 10.105e6);
            }
            loudest = std::max(loudest, sum / looks);
        }
        EXPECT_LT(10.0 * std::log10(loudest), 9.5) << antenna.name;
    }
}

TEST(Programme, LoopIsAsLoudAsItMayBeAndCloses) {
    using enum Programme::Kind;
    for (const auto kind : {FirstTune, SecondTune, DeepVoice, HighVoice}) {
        const Programme programme(kind, 3);
        float loudest = 0.0F;
        const auto count = std::lround(programme.Length() * Programme::Rate);
        for (long i = 0; i < count; ++i) {
            loudest =
                std::max(loudest, std::abs(programme.At(static_cast<double>(i) / Programme::Rate)));
        }
        EXPECT_NEAR(loudest, 1.0F, 0.02F);
        EXPECT_NEAR(std::abs(programme.At(programme.Length() - 1.0e-9) - programme.At(0.0)), 0.0F,
                    0.05F);
        EXPECT_NEAR(programme.SumAt(programme.Length() - 1.0e-9), programme.SumAt(0.0), 1.0e-3F);
    }
}

} // namespace
} // namespace larkspool::demo
