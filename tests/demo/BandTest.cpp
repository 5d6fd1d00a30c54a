#include "demo/Antenna.h"
#include "demo/Programme.h"
#include "demo/SharedBand.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace larkspool::demo {
namespace {

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
