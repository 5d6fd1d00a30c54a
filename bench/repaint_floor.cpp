// A window of the console's size that does nothing but repaint the waterfall's area 25 times a
// second, from a picture in the screen's own pixels: what the console costs is measured beside it.
#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <cstring>

namespace {

constexpr QSize WindowSize(1064, 391); // the console's at start, with its menu bar
constexpr QRect Area(26, 267, 1024, 105);
constexpr int Period = 40; // ms

class Repainted : public QWidget {
  public:
    Repainted()
        : picture(Area.size() * devicePixelRatioF(), QImage::Format_RGB32),
          rowHeight(qRound(devicePixelRatioF())) {
        picture.fill(Qt::darkBlue);
    }

    void AddRow() {
        const auto row = static_cast<std::size_t>(picture.bytesPerLine() * rowHeight);
        const auto rest = static_cast<std::size_t>(picture.sizeInBytes()) - row;
        std::memmove(picture.bits() + row, picture.constBits(), rest);
        std::memset(picture.bits(), ++shade, row);
        update(Area);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setClipRegion(event->region());
        const QPointF place = painter.deviceTransform().map(QPointF(Area.topLeft()));
        painter.setTransform(painter.deviceTransform().inverted(), true);
        painter.drawImage(place.toPoint(), picture);
    }

  private:
    QImage picture;
    int rowHeight; // lines of the screen
    unsigned char shade = 0;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    Repainted window;
    window.resize(WindowSize);
    window.show();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&window] { window.AddRow(); });
    timer.start(Period);
    return QApplication::exec();
}
