#include "support/PictureGraphics.h"
#include "waterfall/WaterfallClass.h"

#include <gtest/gtest.h>

#include <string>

namespace larkspool {
namespace {

constexpr std::size_t Header = 13;

class WaterfallPicture : public ::testing::Test {
  protected:
    WaterfallPicture() {
        canvas.Place("canvas", {0, 0, 1024, 105});
        canvas.SetLevels(1.0, 0);
        canvas.SetUpdating(true);
    }

    void Row(const std::string& bins) { canvas.NewData(std::string(Header, 'h') + bins); }
    void FlatRow(int bin, std::size_t count = 1024) {
        Row(std::string(count, static_cast<char>(bin)));
    }

    Picture Paint(int width = 1024) {
        PictureGraphics graphics(width, 105);
        canvas.Event_Paint(graphics);
        return graphics.paper;
    }

    // A row of the paper: yellow 'y', red 'r', black 'b'.
    std::string Marks(int y, int width = 1024) {
        const Picture picture = Paint(width);
        std::string marks;
        for (int x = 0; x < width; ++x) {
            const Color color = PixelOf(picture, x, y);
            marks += color == Color{255, 255, 0} ? 'y'
                     : color == Color{255, 0, 0} ? 'r'
                     : color == Color{0, 0, 0}   ? 'b'
                                                 : '.';
        }
        return marks;
    }

    // The color of one bin at gain 1.00 and offset 0.
    Color ColorOf(std::uint8_t bin) const { return table[static_cast<std::uint8_t>(bin - 55) * 4]; }

    WaterfallClass canvas;
    ColorTable table;
};

TEST_F(WaterfallPicture, TheBandsOfColorMeetWhereTheyShould) {
    // Worked out by hand at both edges of every band; what overruns is cut at 255.
    const std::pair<int, Color> cases[] = {
        {0, {0, 0, 0}},       {1, {0, 0, 1}},       {172, {0, 0, 255}},   {173, {0, 1, 255}},
        {348, {0, 255, 255}}, {349, {0, 255, 253}}, {479, {0, 255, 0}},   {480, {0, 255, 0}},
        {481, {1, 255, 0}},   {615, {255, 255, 0}}, {616, {255, 255, 0}}, {617, {255, 253, 0}},
        {868, {255, 0, 0}},   {869, {255, 0, 0}},   {946, {255, 0, 65}},  {1023, {255, 0, 130}}};
    for (const auto& [index, color] : cases) {
        EXPECT_EQ(table[index], color) << index;
    }
}

TEST_F(WaterfallPicture, GainStretchesAndOffsetMovesTheBlackPoint) {
    struct Case {
        double gain;
        int offset;
        int bin; // 55 is the bottom; what lies below wraps to the top
        int level;
    };
    const Case cases[] = {{1.00, 0, 55, 0},    {1.00, 0, 54, 255},  {1.00, 63, 117, 0},
                          {1.00, 63, 119, 1},  {2.22, 0, 155, 222}, {2.22, 10, 155, 199},
                          {5.00, 0, 107, 255}, {0.00, 0, 54, 0},    {0.01, 0, 254, 1}};
    for (const auto& [gain, offset, bin, level] : cases) {
        canvas.SetLevels(gain, offset);
        FlatRow(bin);
        EXPECT_EQ(PixelOf(Paint(), 7, 5), table[level * 4]) << gain << ' ' << offset << ' ' << bin;
    }
}

TEST_F(WaterfallPicture, EachRowIsDrawnAboveTheOneBefore) {
    const auto bin = [](int row, int x) { return static_cast<std::uint8_t>(row * 31 + x * x / 7); };
    constexpr int Rows = 230; // more than the picture is high
    for (int row = 0; row < Rows; ++row) {
        std::string bins;
        for (int x = 0; x < 1024; ++x) {
            bins += static_cast<char>(bin(row, x));
        }
        Row(bins);
    }
    const Picture picture = Paint();
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 1024; ++x) {
            ASSERT_EQ(PixelOf(picture, x, 5 + y), ColorOf(bin(Rows - 1 - y, x))) << x << ' ' << y;
        }
    }
}

TEST_F(WaterfallPicture, ShortRowsKeepTheOldTailAndTooShortOnesAreNone) {
    FlatRow(100);
    FlatRow(200, 1000 - Header); // the shortest that counts: 987 bins
    FlatRow(250, 999 - Header);
    canvas.NewData("");
    const Picture picture = Paint();
    EXPECT_EQ(PixelOf(picture, 986, 5), ColorOf(200));
    EXPECT_EQ(PixelOf(picture, 987, 5), ColorOf(100));
    EXPECT_EQ(PixelOf(picture, 0, 6), ColorOf(100));
    FlatRow(90, 100'000); // far more than a row holds
    EXPECT_EQ(PixelOf(Paint(), 1023, 5), ColorOf(90));
}

TEST_F(WaterfallPicture, MarksShowThePassbandAndTheCarrierAtAnyWidth) {
    using Run = std::string;
    EXPECT_EQ(Marks(0), Run(1024, 'b')) << "no marks without a picture";
    std::string bins(1024, static_cast<char>(100));
    bins[800] = static_cast<char>(155);
    Row(bins);
    canvas.SetPassband(-2700, -100); // a lower sideband, left of the carrier
    // 512 pixels stand for 7,328 Hz: from 323.4 to 505.0.
    const Run marks = Run(323, '.') + Run(182, 'y') + Run(5, '.') + Run(4, 'r') + Run(510, '.');
    EXPECT_EQ(Marks(0), marks);
    EXPECT_EQ(Marks(3), marks);
    EXPECT_EQ(Marks(4), Run(1024, '.')) << "one row stays free";
    canvas.SetPassband(0, 3664); // a quarter of the span
    EXPECT_EQ(Marks(0, 960), Run(478, '.') + Run(4, 'r') + Run(238, 'y') + Run(240, '.'));
    EXPECT_EQ(PixelOf(Paint(960), 750, 5), ColorOf(155)) << "bin 800 at 960/1024";
}

TEST_F(WaterfallPicture, BesideAPictureBegunOnANarrowerCanvasTheGroundShows) {
    for (const int width : {0, 960}) { // narrower than a row
        canvas.Place("canvas", {0, 0, width, 105});
        canvas.DropPicture();
        FlatRow(155);
    }
    canvas.Place("canvas", {0, 0, 1024, 105});
    const Picture picture = Paint();
    EXPECT_EQ(PixelOf(picture, 959, 5), ColorOf(155)) << "unscaled, as the marks are";
    EXPECT_EQ(PixelOf(picture, 960, 5), PictureGraphics::Ground);
    EXPECT_EQ(PixelOf(picture, 1023, 104), PictureGraphics::Ground);
}

} // namespace
} // namespace larkspool
