#include "demo/Listening.h"

#include "demo/WaterfallRow.h"

#include <gtest/gtest.h>

#include <algorithm>

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

std::vector<std::uint8_t> Bins(const Tuning& tuning, std::size_t antenna = 0) {
    WaterfallRow row(SharedBand(), Antennas()[antenna]);
    const auto message = row.Row(tuning, someTime);
    EXPECT_EQ(message.size(), 16U + 1024U);
    EXPECT_EQ(std::string(message.begin(), message.begin() + 3), "W/F");
    return {message.begin() + 16, message.end()};
}

std::size_t PeakBin(const std::vector<std::uint8_t>& bins) {
    return static_cast<std::size_t>(std::ranges::max_element(bins) - bins.begin());
}

double Median(std::vector<std::uint8_t> bins) {
    std::ranges::nth_element(bins, bins.begin() + 512);
    return bins[512];
}

// Where in the row a frequency belongs, and the middle of the bins that are as
// strong as the strongest within ten of there.
double Place(const Tuning& view, double hertz) {
    return (hertz - WaterfallRow::LeftEdge(view)) / WaterfallRow::Span(view) * 1024.0;
}

double PeakNear(const std::vector<std::uint8_t>& bins, double place) {
    const auto from = static_cast<std::size_t>(place) - 10;
    const auto highest = *std::max_element(&bins[from], &bins[from + 20]);
    double sum = 0.0;
    double count = 0.0;
    for (std::size_t i = from; i < from + 20; ++i) {
        if (bins[i] == highest) {
            sum += static_cast<double>(i);
            count += 1.0;
        }
    }
    return sum / count;
}

TEST(WaterfallRow, CarrierStandsInItsBinAtItsLevel) {
    for (const double centre : {10020.0, 10019.0, 10022.345, 10026.5, 10013.5}) {
        const Tuning view = View(11, centre - 7.328);
        const auto bins = Bins(view);
        // As the client reckons, whose left edge is the tuned frequency less 7.328 kHz.
        const double clients = (10020.0 - centre + 7.328) * 1024.0 / 14.656;
        EXPECT_NEAR(PeakNear(bins, clients), Place(view, 10.02e6), 0.6) << centre;
        EXPECT_NEAR(PeakNear(bins, clients), clients, 1.0) << centre;
        EXPECT_NEAR(bins[PeakBin(bins)], 255 - 70, 1.0) << centre;
    }
}

TEST(WaterfallRow, CarrierKeepsItsPlaceAtEveryZoom) {
    for (int zoom = 6; zoom <= 14; ++zoom) {
        const Tuning view = View(zoom, 10020.0 - 0.3 * 30000.0 / std::exp2(zoom));
        const auto bins = Bins(view);
        const double place = Place(view, 10.02e6);
        EXPECT_NEAR(PeakNear(bins, place), place, 0.6) << zoom;
        EXPECT_NEAR(bins[static_cast<std::size_t>(std::lround(place))], 255 - 70, 1.5) << zoom;
    }
}

TEST(WaterfallRow, QuietStretchHoldsOnlyNoise) {
    const auto bins = Bins(View(11, 10098.0));
    EXPECT_LT(bins[PeakBin(bins)], Median(bins) + 14.0);
    EXPECT_GT(Median(bins), 255 - 150);
    EXPECT_LT(Median(bins), 255 - 130);
}

TEST(WaterfallRow, StationsBeyondTheEdgesDoNotFoldIn) {
    // The time station, the strongest by far, lies a little outside.
    for (const double left : {10002.7, 10014.0 + 7.0, 9985.0 - 2.7}) {
        const Tuning view = View(11, left);
        const auto bins = Bins(view);
        for (std::size_t bin = 0; bin < bins.size(); ++bin) {
            const double khz = left + 14.648 * static_cast<double>(bin) / 1024.0;
            const bool drifter = khz > 9989.4 && khz < 9990.6;
            ASSERT_TRUE(bins[bin] < 255 - 120 || drifter) << left << ' ' << khz;
        }
    }
}

TEST(WaterfallRow, WholeBandFallsIntoTheRowAndItsEdgesStayInRange) {
    const auto whole = Bins(View(0, 0.0));
    EXPECT_GT(Median({whole.begin(), whole.begin() + 1024}), 255 - 135);
    const auto below = Bins(View(11, -5.0));
    const auto above = Bins(View(11, 29995.0));
    for (const auto& bins : {below, above}) {
        EXPECT_TRUE(std::ranges::all_of(bins, [](std::uint8_t level) { return level >= 55; }));
    }
}

TEST(WaterfallRow, BroadcastEndsWhereItsSoundEnds) {
    WaterfallRow row(SharedBand(), Antennas()[0]);
    for (const double khz : {15245.0, 13690.0}) { // a voice and a tune, without neighbours
        const Tuning view = View(11, khz - 7.328);
        int inside = 0;
        int outside = 0;
        for (int i = 0; i < 50; ++i) {
            const auto message = row.Row(view, someTime.After(i * 0.1));
            for (std::size_t bin = 0; bin < WaterfallRow::Bins; ++bin) {
                const double away = std::abs(static_cast<double>(bin) - 512.0) * 14.648 / 1024.0;
                int& highest = away > 4.3 ? outside : inside;
                highest = std::max<int>(highest, away > 0.3 ? message[16 + bin] : 0);
            }
        }
        EXPECT_GT(inside, 255 - 95) << khz;
        EXPECT_LT(outside, 255 - 124) << khz << ", noise reaches 255 - 127";
    }
}

TEST(WaterfallRow, LowerSidebandVoiceLiesBelowItsFrequency) {
    double below = 0.0;
    double above = 0.0;
    WaterfallRow row(SharedBand(), Antennas()[0]);
    for (int i = 0; i < 25; ++i) {
        const auto message = row.Row(View(11, 7055.0 - 7.328), someTime.After(i * 0.1));
        below = std::max<double>(
            below, *std::max_element(message.begin() + 16 + 400, message.begin() + 16 + 505));
        above = std::max<double>(
            above, *std::max_element(message.begin() + 16 + 520, message.begin() + 16 + 620));
    }
    EXPECT_GT(below, above + 30.0);
}

} // namespace
} // namespace larkspool::demo
