// A window that does nothing but repaint the waterfall's area 25 times a second: what the console
// costs is measured beside it.
#include <QApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <cstring>

namespace {

constexpr int Width = 1024;
constexpr int Height = 100;
constexpr int Period = 40; // ms

class Repainted : public QWidget {
  public:
    Repainted() : picture(Width, Height, QImage::Format_RGB32) { picture.fill(Qt::darkBlue); }

    void AddRow() {
        const auto stride = static_cast<std::size_t>(picture.bytesPerLine());
        std::memmove(picture.bits() + stride, picture.constBits(), stride * (Height - 1));
        std::memset(picture.bits(), ++shade, stride);
        update();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setClipRegion(event->region());
        painter.drawImage(0, 0, picture);
    }

  private:
    QImage picture;
    unsigned char shade = 0;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    Repainted window;
    window.resize(Width, Height);
    window.show();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&window] { window.AddRow(); });
    timer.start(Period);
    return QApplication::exec();
}
