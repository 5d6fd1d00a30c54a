#include "support/PictureGraphics.h"
#include "waterfall/WaterfallClass.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace larkspool {
namespace {

constexpr std::size_t Header = 13;
constexpr Color Yellow = {255, 255, 0};
constexpr Color Red = {255, 0, 0};

class WaterfallPicture : public ::testing::Test {
  protected:
    WaterfallPicture() {
        canvas.Place("canvas", {0, 0, 1024, 105});
        canvas.SetLevels(1.0, 0);
        canvas.SetUpdating(true);
    }

    static std::string Frame(const std::string& bins) { return std::string(Header, 'h') + bins; }
    static std::string Flat(std::uint8_t bin, std::size_t count = 1024) {
        return Frame(std::string(count, static_cast<char>(bin)));
    }

    Picture Paint(int width = 1024) {
        PictureGraphics graphics(width, 105);
        canvas.Event_Paint(graphics);
        return graphics.paper;
    }

    // The colour of one bin at gain 1.00 and offset 0.
    Color ColorOf(std::uint8_t bin) const { return table[static_cast<std::uint8_t>(bin - 55) * 4]; }

    WaterfallClass canvas;
    ColorTable table;
};

TEST_F(WaterfallPicture, EachRowIsDrawnAboveTheOneBefore) {
    std::mt19937 dice(1);
    std::vector<std::string> rows;
    for (int i = 0; i < 230; ++i) { // more than the picture is high
        std::string bins(1024, '\0');
        for (char& bin : bins) {
            bin = static_cast<char>(dice());
        }
        canvas.NewData(Frame(bins));
        rows.push_back(bins);
    }
    const Picture picture = Paint();
    for (int y = 0; y < 100; ++y) {
        const std::string& bins = rows[rows.size() - 1 - static_cast<std::size_t>(y)];
        for (int x = 0; x < 1024; ++x) {
            const auto bin = static_cast<std::uint8_t>(bins[static_cast<std::size_t>(x)]);
            ASSERT_EQ(picture.Pixel(x, 5 + y), ColorOf(bin)) << x << ' ' << y << ' ' << int{bin};
        }
    }
}

TEST_F(WaterfallPicture, AByteBelowTheBottomWrapsToTheTop) {
    canvas.NewData(Flat(54));
    EXPECT_EQ(Paint().Pixel(7, 5), table[1020]);
    canvas.NewData(Flat(55));
    EXPECT_EQ(Paint().Pixel(7, 5), (Color{0, 0, 0}));
    canvas.NewData(Flat(255));
    EXPECT_EQ(Paint().Pixel(7, 5), table[800]);
}

TEST_F(WaterfallPicture, ShortRowsKeepTheOldTailAndTooShortOnesAreNone) {
    canvas.NewData(Flat(100));
    canvas.NewData(Flat(200, 1000 - Header)); // the shortest that counts: 987 bins
    EXPECT_EQ(Paint().Pixel(986, 5), ColorOf(200));
    EXPECT_EQ(Paint().Pixel(987, 5), ColorOf(100));
    EXPECT_EQ(Paint().Pixel(1023, 5), ColorOf(100));
    canvas.NewData(Flat(250, 999 - Header));
    canvas.NewData("");
    EXPECT_EQ(Paint().Pixel(0, 5), ColorOf(200));
    EXPECT_EQ(Paint().Pixel(0, 6), ColorOf(100));
    canvas.NewData(Flat(90, 100'000)); // far more than a row holds
    EXPECT_EQ(Paint().Pixel(1023, 5), ColorOf(90));
}

TEST_F(WaterfallPicture, MarksShowThePassbandAndTheCarrier) {
    EXPECT_EQ(Paint().Pixel(512, 0), (Color{0, 0, 0})) << "no marks without a picture";
    canvas.NewData(Flat(55));
    canvas.SetPassband(-2700, -100); // a lower sideband, left of the carrier
    const Picture picture = Paint();
    // 512 pixels stand for 7,328 Hz: from 323.4 to 505.0.
    EXPECT_EQ(picture.Pixel(322, 0), PictureGraphics::Untouched);
    EXPECT_EQ(picture.Pixel(323, 0), Yellow);
    EXPECT_EQ(picture.Pixel(504, 3), Yellow);
    EXPECT_EQ(picture.Pixel(505, 3), PictureGraphics::Untouched);
    EXPECT_EQ(picture.Pixel(400, 4), PictureGraphics::Untouched) << "one row stays free";
    for (const int x : {510, 513}) {
        EXPECT_EQ(picture.Pixel(x, 3), Red);
    }
    EXPECT_EQ(picture.Pixel(509, 0), PictureGraphics::Untouched);
    EXPECT_EQ(picture.Pixel(514, 0), PictureGraphics::Untouched);
}

TEST_F(WaterfallPicture, ANarrowerWindowScalesPictureAndMarks) {
    std::string bins(1024, static_cast<char>(55));
    bins[800] = static_cast<char>(155);
    canvas.NewData(Frame(bins));
    canvas.SetPassband(0, 3664); // a quarter of the span
    const Picture picture = Paint(960);
    EXPECT_EQ(picture.Pixel(750, 5), ColorOf(155)) << "bin 800 at 960/1024";
    EXPECT_EQ(picture.Pixel(719, 0), Yellow);
    EXPECT_EQ(picture.Pixel(721, 0), PictureGraphics::Untouched);
    EXPECT_EQ(picture.Pixel(478, 0), Red) << "510 at 960/1024";
    EXPECT_EQ(picture.Pixel(481, 0), Red) << "four points wide at any scale";
    EXPECT_EQ(picture.Pixel(482, 0), Yellow);
}

TEST_F(WaterfallPicture, APictureNarrowerThanTheRowDropsTheRest) {
    canvas.Place("canvas", {0, 0, 960, 105});
    canvas.NewData(Flat(155));
    EXPECT_EQ(Paint(960).Pixel(959, 5), ColorOf(155));
    canvas.Place("canvas", {0, 0, 0, 0});
    canvas.DropPicture();
    canvas.NewData(Flat(155));
    Paint();
}

} // namespace
} // namespace larkspool
