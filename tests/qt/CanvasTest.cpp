#include "qt/OnScreen.h"

#include "platform/Canvas.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace larkspool {
namespace {

// Each column and each row that its picture ever had has a color of its own.
class Scrolling : public Canvas {
  public:
    Scrolling() { Begin(100); }

    void Begin(int width) {
        picture = Picture(width, 20);
        for (int row = 0; row < picture.Height(); ++row) {
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
        if (shows) {
            g.DrawPicture(picture, 0, 5, g.Width(), g.Height() - 5);
        }
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
    void SetUp() override {
        window.Add(canvas, "Canvas", {20, 30, 100, 25}, {true, true, true, true});
        window.Open();
        widget = &window.Find<QWidget>("Canvas");
    }

    // The picture fills its place: each of the screen's pixels shows the nearest one of the
    // picture's. A row that has come since the whole was drawn may begin a line earlier or later.
    void ExpectPicture(int tolerance, const std::string& when) {
        const QImage seen = widget->grab().toImage();
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
    QWidget* widget = nullptr;
};

// Also run at other scales of the screen, where the picture is scaled whatever its size.
TEST_F(CanvasView, AScaledPictureIsNotBlurredHoweverItScrolls) {
    for (const auto& [width, height] :
         {std::pair{100, 20}, std::pair{200, 40}, std::pair{150, 30}, std::pair{93, 17}}) {
        const double scale = widget->devicePixelRatio() * height / 20;
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
            canvas.Begin(columns);
            ExpectPicture(0, "another picture");
        }
    }
}

TEST_F(CanvasView, AClickTellsItsPlaceAndManyRequestsMakeOnePaint) {
    std::vector<QPoint> clicks;
    canvas.mouseDown = [&](int x, int y) {
        clicks.emplace_back(x, y);
        return true;
    };
    QTest::mouseClick(widget, Qt::LeftButton, {}, {33, 7});
    QTest::mouseDClick(widget, Qt::LeftButton, {}, {80, 7}); // its second press is no click
    EXPECT_EQ(clicks, std::vector{QPoint(33, 7)});
    EXPECT_FALSE(widget->hasFocus());
    LetEventsRun();
    canvas.paints = 0;
    canvas.shows = false;
    for (int row = 0; row < 100; ++row) {
        canvas.Invalidate();
    }
    LetEventsRun();
    EXPECT_EQ(canvas.paints, 1);
    const QPoint place = widget->mapTo(&window.Shell(), QPoint(50, 12));
    EXPECT_EQ(window.Shell().grab().toImage().pixel(place),
              window.Shell().palette().color(QPalette::Window).rgb());
}

} // namespace
} // namespace larkspool
