#include "support/ConsoleFixture.h"
#include "support/PictureGraphics.h"

#include <optional>
#include <utility>

namespace larkspool {
namespace {

// A screen that paints the waterfall when it is asked to, and not before.
class Screen : public ControlView {
  public:
    using ControlView::ControlView;
    void Changed(Aspect /*aspect*/) override { isStale = true; }

    bool isStale = true;
    PictureGraphics graphics{1, 1};
};

// The waterfall in a session: rows come in, a click tunes.
class Watching : public ConsoleFixture {
  protected:
    Watching() {
        Start();
        Console().CheckBoxUpdateWaterfall.SetValue(true);
        ConnectAndStream();
        screen.emplace(Console().WaterfallCanvas);
    }

    void Row(char bin) {
        Waterfall().Say("W/F", std::string(13, '\0') + std::string(1024, bin));
        desktop.Advance(0);
    }

    Color Pixel(int x, int y) {
        if (std::exchange(screen->isStale, false)) {
            screen->graphics = PictureGraphics(Console().WaterfallCanvas.Bounds().width, 105);
            Console().WaterfallCanvas.Event_Paint(screen->graphics);
        }
        return PixelOf(screen->graphics.paper, x, y);
    }
    Color TopRow() { return Pixel(100, 5); }

    ColorTable table;
    std::optional<Screen> screen;
};

TEST_F(Watching, RowsArriveAndAreDroppedWhileSwitchedOff) {
    Row(105);
    EXPECT_EQ(TopRow(), table[200]);
    Console().CheckBoxUpdateWaterfall.SetValue(false);
    Row(100);
    EXPECT_EQ(TopRow(), PictureGraphics::Ground);
    Console().CheckBoxUpdateWaterfall.SetValue(true);
    EXPECT_EQ(TopRow(), table[200]) << "what came meanwhile hasn't disturbed the picture";
    Console().SliderWaterfallGain.SetValue(200);
    Row(105);
    EXPECT_EQ(TopRow(), table[400]);
    Console().SliderWaterfallMinDb.SetValue(190);
    Row(105);
    EXPECT_EQ(TopRow(), table[80 * 4]);
    Console().Resize(1000, 370);
    EXPECT_EQ(TopRow(), table[80 * 4]) << "the picture lasts";
    PressConnect();
    EXPECT_EQ(TopRow(), (Color{0, 0, 0})) << "a session starts on black";
}

TEST_F(Watching, AClickTunesThePassbandsMiddleToTheSpot) {
    struct Case {
        int mode;
        int x;
        const char* freq;
    };
    const Case cases[] = {{0, 512, "10000"},           // the middle of a symmetric passband
                          {0, 0, "9992.672"},          // the left edge
                          {3, 512, "9998.6"},          // 100 to 2700 Hz: the middle is 1.4 kHz up
                          {2, 1023, "10008.7136875"}}; // lower sideband, the right edge
    for (const Case& one : cases) {
        Console().PopupMenuMode.Pick(one.mode);
        Console().TextFieldFreq.SetText("10000");
        EXPECT_EQ(Console().WaterfallCanvas.mouseDown(one.x, 50), false);
        EXPECT_EQ(Console().TextFieldFreq.Text(), one.freq);
    }
    const auto sent = Waterfall().TakeCommands();
    EXPECT_EQ(sent[sent.size() - 3].rfind("SET zoom=11 start=", 0), 0U);
    Console().PopupMenuMode.Pick(0);
    Console().Resize(1000, 370); // the scale stays
    EXPECT_EQ(Console().WaterfallCanvas.Bounds().width, 960);
    Console().TextFieldFreq.SetText("10000");
    Console().WaterfallCanvas.mouseDown(768, 0);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "10003.664");
    Console().CheckBoxUpdateWaterfall.SetValue(false);
    EXPECT_EQ(Console().WaterfallCanvas.mouseDown(100, 50), true);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "10003.664");
}

TEST_F(Watching, TheMarkShowsThePassbandThatTheReceiverHasBeenTold) {
    Row(105);
    const auto marked = [this](int x) { return Pixel(x, 0) == Color{255, 255, 0}; };
    EXPECT_TRUE(marked(400) && marked(600)) << "AM, on both sides of the carrier";
    Console().PopupMenuMode.Pick(2);
    EXPECT_TRUE(marked(400)) << "the lower sideband";
    EXPECT_FALSE(marked(600));
    Console().TextFieldHighCut.SetText("2000");
    EXPECT_TRUE(marked(600));
}

} // namespace
} // namespace larkspool
