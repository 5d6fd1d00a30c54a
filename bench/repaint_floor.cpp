// A window of the console's size that does nothing but repaint the waterfall's area 25 times a
// second: what the console costs is measured beside it.
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
    Repainted() : picture(Area.size(), QImage::Format_RGB32) { picture.fill(Qt::darkBlue); }

    void AddRow() {
        const auto stride = static_cast<std::size_t>(picture.bytesPerLine());
        const auto rest = stride * static_cast<std::size_t>(Area.height() - 1);
        std::memmove(picture.bits() + stride, picture.constBits(), rest);
        std::memset(picture.bits(), ++shade, stride);
        update(Area);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setClipRegion(event->region());
        painter.drawImage(Area.topLeft(), picture);
    }

  private:
    QImage picture;
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
