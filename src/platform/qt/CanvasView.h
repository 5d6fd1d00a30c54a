#pragma once

#include "platform/Canvas.h"
#include "platform/qt/ScaledPicture.h"
#include "platform/qt/WidgetView.h"

#include <QWidget>

#include <functional>

namespace larkspool {

// Where the program paints nothing, the window shows.
class CanvasWidget : public QWidget {
  public:
    using QWidget::QWidget;

    std::function<void(QPainter&)> paint;
    std::function<void(QPoint)> pressed;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* /*event*/) override {} // else a press once more
};

class CanvasView : public ViewOf<Canvas, CanvasWidget> {
  public:
    CanvasView(Canvas& canvas, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;

  private:
    void Paint(QPainter& painter);

    ScaledPicture scaled; // what the screen shows of the one picture that the canvas paints
};

} // namespace larkspool
