#include "qt/OnScreen.h"

#include "platform/Canvas.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace larkspool {
namespace {

// A picture below a yellow mark. Each column and each row that it ever had has a colour of its own.
class Scrolling : public Canvas {
  public:
    Scrolling() { Begin(100, 20); }

    void Begin(int width, int height) {
        picture = Picture(width, height);
        for (int row = 0; row < height; ++row) {
            PutRow();
        }
        Invalidate();
    }
    void AddRow() {
        PutRow();
        InvalidateRow();
    }

    void Event_Paint(Graphics& g) override {
        ++paints;
        if (!shows) {
            return;
        }
        g.DrawPicture(picture, 0, 5, g.Width(), g.Height() - 5);
        g.SetForeColor({255, 255, 0});
        g.FillRect(10, 0, 20, 4);
        g.FillRect(-50, -50, 10, 10);
    }

    Picture picture{0, 0};
    int rows = 0; // so far
    bool shows = true;
    int paints = 0;

  private:
    void PutRow() {
        picture.ScrollDown(1);
        ++rows;
        for (int x = 0; x < picture.Width(); ++x) {
            const Color color = {0, static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(rows)};
            picture.Row(0)[static_cast<std::size_t>(x)] = color.Packed();
        }
    }
};

class CanvasView : public testing::Test {
  protected:
    void Open(int width, int height = 25) {
        window.SetTitle("Canvas");
        canvas.Place("Canvas", {20, 30, width, height}, {true, true, true, true});
        canvas.spokenName = "Waterfall";
        window.AddControl(canvas);
        window.Open();
    }

    QImage Seen() const { return window.Find<QWidget>("Canvas").grab().toImage(); }

    // The picture fills what is below the mark: for each of the screen's pixels the nearest one. A
    // row that has come since the whole was drawn may begin a line earlier or later.
    void ExpectPicture(int tolerance, const std::string& when) {
        const QImage seen = Seen();
        const int top = qRound(5 * seen.devicePixelRatio());
        const int height = seen.height() - top;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                const QRgb pixel = seen.pixel(x, top + y);
                const Picture& picture = canvas.picture;
                const int column = (2 * x + 1) * picture.Width() / (2 * seen.width());
                const int row = (2 * y + 1) * picture.Height() / (2 * height);
                ASSERT_EQ(qGreen(pixel), column) << when << ", " << x << ' ' << y;
                ASSERT_LE(std::abs(((canvas.rows - qBlue(pixel)) & 255) - row), tolerance)
                    << when << ", " << x << ' ' << y;
                ASSERT_EQ(qRed(pixel), 0);
            }
        }
    }

    Scrolling canvas;
    TestWindow window;
};

// Also run at other scales of the screen, where the picture is scaled whatever its size.
TEST_F(CanvasView, AScaledPictureIsNotBlurredHoweverItScrolls) {
    struct Case {
        int width;
        int height; // of the picture's place
    };
    Open(100);
    for (const auto& [width, height] :
         {Case{100, 20}, Case{200, 40}, Case{150, 30}, Case{93, 17}}) {
        const double scale = window.Find<QWidget>("Canvas").devicePixelRatio() * height / 20;
        const int tolerance = scale == std::floor(scale) ? 0 : 1;
        canvas.Follow(width - 100, height - 20);
        ExpectPicture(0, "in its place");
        for (const int count : {1, 1, 1, 5, 19, 20, 50, 1}) {
            for (int row = 0; row < count; ++row) {
                canvas.AddRow();
            }
            ExpectPicture(tolerance, std::to_string(count) + " rows at " + std::to_string(scale));
        }
        for (const int columns : {60, 100, 100}) {
            canvas.Begin(columns, 20);
            ExpectPicture(0, "another picture");
        }
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
