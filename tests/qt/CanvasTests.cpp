#include "qt/OnScreen.h"

#include "platform/Canvas.h"

#include <QImage>

#include <gtest/gtest.h>

namespace larkspool {
namespace {

constexpr Color red{255, 0, 0};
constexpr Color green{0, 255, 0};

// A picture of red and green columns below a yellow mark.
class Striped : public Canvas {
  public:
    Striped() : picture(100, 20) {
        for (int x = 0; x < 100; ++x) {
            for (int y = 0; y < 20; ++y) {
                picture.SetPixel(x, y, x % 2 == 0 ? red : green);
            }
        }
    }

    void Event_Paint(Graphics& g) override {
        ++paints;
        if (!shows) {
            return;
        }
        g.DrawPicture(picture, 0, 5, g.Width(), 20);
        g.SetForeColor({255, 255, 0});
        g.FillRect(10, 0, 20, 4);
        g.FillRect(-50, -50, 10, 10);
    }

    Picture picture;
    bool shows = true;
    int paints = 0;
};

class CanvasView : public testing::Test {
  protected:
    void Open(int width) {
        window.SetTitle("Canvas");
        canvas.Place("Canvas", {20, 30, width, 25});
        canvas.spokenName = "Waterfall";
        window.AddControl(canvas);
        window.Open();
    }

    QRgb PixelAt(int x, int y) const {
        return window.Find<QWidget>("Canvas").grab().toImage().pixel(x, y);
    }

    Striped canvas;
    TestWindow window;
};

TEST_F(CanvasView, APictureKeepsItsColoursPixelByPixel) {
    Open(100);
    EXPECT_EQ(PixelAt(40, 10), red.Packed());
    EXPECT_EQ(PixelAt(41, 10), green.Packed());
    EXPECT_EQ(PixelAt(99, 24), green.Packed());
    EXPECT_EQ(PixelAt(10, 3), 0xffffff00U);
    EXPECT_NE(PixelAt(9, 3), 0xffffff00U);
}

TEST_F(CanvasView, AScaledPictureIsNotBlurred) {
    Open(200);
    for (int x = 0; x < 200; ++x) {
        ASSERT_EQ(PixelAt(x, 10), (x / 2 % 2 == 0 ? red : green).Packed()) << "column " << x;
    }
}

TEST_F(CanvasView, WhereNothingIsPaintedTheWindowShows) {
    canvas.shows = false;
    Open(100);
    auto& shell = window.Shell();
    const QImage seen = shell.grab().toImage();
    const QPoint place = window.Find<QWidget>("Canvas").mapTo(&shell, QPoint(50, 12));
    EXPECT_EQ(seen.pixel(place), shell.palette().color(QPalette::Window).rgb());
}

TEST_F(CanvasView, ManyRequestsMakeOnePaint) {
    Open(100);
    LetEventsRun();
    canvas.paints = 0;
    for (int row = 0; row < 100; ++row) {
        canvas.Invalidate();
    }
    LetEventsRun();
    EXPECT_EQ(canvas.paints, 1);
}

TEST_F(CanvasView, AClickTellsItsPlaceFromTheCanvasCorner) {
    QPoint clicked;
    int clicks = 0;
    canvas.mouseDown = [&](int x, int y) {
        clicked = {x, y};
        ++clicks;
        return true;
    };
    Open(100);
    QTest::mouseClick(&window.Find<QWidget>("Canvas"), Qt::LeftButton, {}, {33, 7});
    EXPECT_EQ(clicked, QPoint(33, 7));
    QTest::mouseDClick(&window.Find<QWidget>("Canvas"), Qt::LeftButton, {}, {80, 7});
    EXPECT_EQ(clicks, 1) << "the second press of a double click is no click";
    EXPECT_FALSE(window.Find<QWidget>("Canvas").hasFocus());
}

} // namespace
} // namespace larkspool
