#include "demo/SharedBand.h"

#include "demo/WaterfallRow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace larkspool::demo {
namespace {

// A view that starts at the unit nearest to a frequency, as a client asks for it.
Tuning View(int zoom, double leftKhz) {
    Tuning tuning;
    tuning.zoomed = true;
    tuning.zoom = zoom;
    tuning.start = std::round(leftKhz * 1000.0 / 1.78814);
    return tuning;
}

// The highest that each bin reaches in so many rows, a tenth of a second apart.
std::vector<int> Bins(const Tuning& view, int rows = 1) {
    WaterfallRow row(SharedBand(), Antennas()[0]);
    std::vector<int> highest(WaterfallRow::Bins);
    for (int i = 0; i < rows; ++i) {
        const auto message = row.Row(view, someTime.After(i * 0.1));
        EXPECT_EQ(message.size(), 16U + 1024U);
        EXPECT_EQ(std::string(message.begin(), message.begin() + 3), "W/F");
        for (std::size_t bin = 0; bin < highest.size(); ++bin) {
            highest[bin] = std::max<int>(highest[bin], message[16 + bin]);
        }
    }
    return highest;
}

TEST(WaterfallRow, CarrierStandsAtItsLevelWhereTheClientReckons) {
    for (int zoom = 6; zoom <= 14; ++zoom) {
        for (const double place : {300.0, 512.0, 581.9, 50.0, 965.0}) {
            const auto view = View(zoom, 10020.0 - place / 1024.0 * 30000.0 / std::exp2(zoom));
            const auto bins = Bins(view);
            const auto from = bins.begin() + std::lround(place) - 10;
            const auto first = std::max_element(from, from + 20);
            const auto last = std::minmax_element(from, from + 20).second;
            const auto middle =
                static_cast<double>(first - bins.begin() + (last - bins.begin())) / 2.0;
            const double off = 10.02e6 - WaterfallRow::LeftEdge(view);
            EXPECT_NEAR(middle, off / WaterfallRow::Span(view) * 1024.0, 0.6) << zoom;
            EXPECT_NEAR(middle, place, zoom > 11 ? 2.2 : 1.0) << zoom << ", as the client reckons";
            EXPECT_NEAR(*first, 255 - 70, 1.5) << zoom << ' ' << place;
        }
    }
}

TEST(WaterfallRow, OnlyNoiseIsWhereNoStationIs) {
    // The time station, the strongest by far, lies a little outside of the first three views and
    // must not fold in; the others cover the quiet stretch.
    for (const double left : {10002.7, 9982.3, 10021.0, 10036.0, 10051.0, 10065.0, 10080.0, 10095.0,
                              10110.0, 10115.0}) {
        auto bins = Bins(View(11, left));
        for (std::size_t bin = 0; bin < bins.size(); ++bin) {
            const double khz = left + 14.648 * static_cast<double>(bin) / 1024.0;
            const bool drifter = khz > 9989.4 && khz < 9990.6;
            ASSERT_TRUE(bins[bin] < 255 - 124 || drifter) << left << ' ' << khz;
        }
        std::ranges::nth_element(bins, bins.begin() + 512);
        EXPECT_NEAR(bins[512], 255 - 140, 10) << left;
    }
}

TEST(WaterfallRow, BroadcastsAndVoicesHaveTheirSidebandsAndNoMore) {
    struct Case {
        double khz, from, to, emptyFrom, emptyTo; // kHz from the station's frequency
    };
    // A voice and a tune, without neighbors, and a voice on the lower sideband.
    for (const Case& one :
         {Case{15245.0, 0.3, 4.3, 4.4, 7.3}, Case{13690.0, -4.3, -0.3, -7.3, -4.4},
          Case{7055.0, -1.6, -0.1, 0.1, 1.5}}) {
        const auto bins = Bins(View(11, one.khz - 7.328), 50);
        const auto highest = [&bins](double from, double to) {
            const auto bin = [](double khz) { return 512 + std::lround(khz / 14.648 * 1024.0); };
            return *std::max_element(bins.begin() + bin(from), bins.begin() + bin(to));
        };
        EXPECT_GT(highest(one.from, one.to), highest(one.emptyFrom, one.emptyTo) + 29) << one.khz;
    }
}

} // namespace
} // namespace larkspool::demo
