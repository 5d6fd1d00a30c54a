#include "demo/Listening.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace larkspool::demo {
namespace {

TEST(Stations, LeaveTheQuietStretchAlone) {
    EXPECT_TRUE(std::ranges::none_of(Stations(), [](const Station& station) {
        return station.khz > 10021.0 && station.khz < 10130.0;
    }));
}

TEST(Antennas, HearTheSameStationDifferently) {
    constexpr double decibels[] = {0.0, 1.5, -0.4, -5.3, -15.3, -5.7, -14.1};
    for (std::size_t i = 0; i < Antennas().size(); ++i) {
        auto stream = Stream(TunedTo(10020.0, Mode::Am, -2500.0, 2500.0), Antennas()[i]);
        stream.Frame(someTime);
        EXPECT_NEAR(stream.SMeter(), -70.0 + decibels[i], 0.2) << Antennas()[i].name;
    }
}

TEST(Band, LightningStrikesNowAndThenAndOpensNoSquelchOf10DbInTheQuietStretch) {
    constexpr int frames = 20'000;
    constexpr int looks = 9; // within the 43 ms of a frame
    for (const Antenna& antenna : Antennas()) {
        double loudest = 0.0;
        int struck = 0;
        for (int frame = 0; frame < frames; ++frame) {
            double sum = 0.0;
            for (int look = 0; look < looks; ++look) {
                const Moment at = someTime.After(0.0427 * frame + 0.0047 * look);
                sum += SharedBand().CrashFactor(antenna, at, 10.105e6);
            }
            const Moment at = someTime.After(0.0427 * frame);
            struck += SharedBand().CrashFactor(antenna, at, 1.0e6) > 20.0 ? 1 : 0;
            loudest = std::max(loudest, sum / looks);
        }
        EXPECT_LT(10.0 * std::log10(loudest), 9.5) << antenna.name;
        EXPECT_GT(struck, frames / 600) << antenna.name;
        EXPECT_LT(struck, frames / 4) << antenna.name;
    }
}

TEST(Programme, LoopIsAsLoudAsItMayBeAndCloses) {
    using enum Programme::Kind;
    for (const auto kind : {FirstTune, SecondTune, DeepVoice, HighVoice}) {
        SCOPED_TRACE(static_cast<int>(kind));
        const Programme programme(kind, 3);
        const double end = programme.Length() - 1.0e-9;
        float loudest = 0.0F;
        for (int i = 0; i < end * Programme::Rate; ++i) {
            loudest = std::max(loudest, std::abs(programme.At(i / Programme::Rate)));
        }
        EXPECT_NEAR(loudest, 1.0F, 0.02F);
        EXPECT_NEAR(std::abs(programme.At(end) - programme.At(0.0)), 0.0F, 0.05F);
        EXPECT_NEAR(programme.SumAt(end), programme.SumAt(0.0), 1.0e-3F);
    }
}

} // namespace
} // namespace larkspool::demo
