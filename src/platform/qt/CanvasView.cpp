#include "platform/qt/CanvasView.h"

#include "platform/qt/ContentArea.h"
#include "platform/qt/MakeChild.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>

namespace larkspool {

namespace {

// Where these points lie on the screen, in its own pixels.
QRect OnScreen(const QPainter& painter, const QRect& points) {
    const QRectF place = painter.deviceTransform().mapRect(QRectF(points));
    const QPoint corner(qRound(place.left()), qRound(place.top()));
    return {corner, QPoint(qRound(place.right()) - 1, qRound(place.bottom()) - 1)};
}

// Paints for the program on Qt's painter, pixels as they are.
class PainterGraphics : public Graphics {
  public:
    PainterGraphics(QPainter& target, ScaledPicture& kept, int columns, int rows)
        : painter(target), scaled(kept), width(columns), height(rows) {}

    int Width() const override { return width; }
    int Height() const override { return height; }
    void Clear(int x, int y, int across, int down) override {
        painter.eraseRect(x, y, across, down);
    }

    void SetForeColor(Color color) override { foreColor = QColor(color.Packed()); }

    void FillRect(double x, double y, double across, double down) override {
        painter.fillRect(QRectF(x, y, across, down), foreColor);
    }

    void DrawPicture(const Picture& picture, int x, int y) override {
        DrawPicture(picture, x, y, picture.Width(), picture.Height());
    }

    void DrawPicture(const Picture& picture, int x, int y, int across, int down) override {
        const QRect place = OnScreen(painter, QRect(x, y, across, down));
        painter.save();
        painter.setTransform(painter.deviceTransform().inverted(), true);
        if (place.size() == QSize(picture.Width(), picture.Height())) {
            // Borrows the picture's pixels for the time of the call.
            const auto pixels = picture.Pixels();
            painter.drawImage(place.topLeft(),
                              QImage(reinterpret_cast<const uchar*>(pixels.data()), picture.Width(),
                                     picture.Height(), picture.Width() * qsizetype{4},
                                     QImage::Format_RGB32));
        } else {
            scaled.Draw(painter, place, picture);
        }
        painter.restore();
    }

  private:
    QPainter& painter;
    ScaledPicture& scaled;
    int width;
    int height;
    QColor foreColor = Qt::black;
};

} // namespace

void CanvasWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paint(painter);
}

void CanvasWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressed(event->position().toPoint());
    }
}

CanvasView::CanvasView(Canvas& canvas, Desktop& theDesktop, QWidget& content)
    : ViewOf(canvas, theDesktop, MakeChild<CanvasWidget>(content)) {
    shape.setAttribute(Qt::WA_OpaquePaintEvent, canvas.coversItself);
    shape.paint = [this](QPainter& painter) { Paint(painter); };
    shape.pressed = [this](QPoint place) {
        Raise([this, place] {
            if (const auto handler = Held()->mouseDown) {
                handler(place.x(), place.y());
            }
        });
    };
}

void CanvasView::Paint(QPainter& painter) {
    Raise([this, &painter] {
        PainterGraphics graphics(painter, scaled, shape.width(), shape.height());
        Held()->Event_Paint(graphics);
    });
}

void CanvasView::Redraw(Aspect aspect) {
    if (aspect == Aspect::PictureRow) {
        scaled.RowAdded();
    } else if (aspect == Aspect::Picture) {
        scaled.AllChanged();
    } else {
        return;
    }
    shape.update();
    if (ContentArea* const area = ContentAreaOf(shape)) {
        area->ReleaseHeld();
    }
}

} // namespace larkspool
