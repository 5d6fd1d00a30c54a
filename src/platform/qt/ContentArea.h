#pragma once

#include <QRect>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

namespace larkspool {

// The window's ground: the hairlines that part its rows, and the ring around a box that has the
// keyboard, for which the box itself has no room. It also gathers what its controls want
// repainted, because each paint of its own means a wait for the display.
class ContentArea : public QWidget {
  public:
    ContentArea(std::vector<int> lines, QWidget* parent);

    // Changes a child that changes several times a second. Its paint waits for the next picture,
    // or for the time of one at the latest.
    void ChangeHeld(QWidget& control, const std::function<void()>& change);
    void ReleaseHeld();

    void SetRing(const QRect& around); // what the ring encloses; an empty one: no ring

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void Hold(QWidget& control);
    void PaintRing(QPainter& painter) const;

    std::vector<int> hairlines;
    std::vector<QWidget*> held; // children, whose paints wait
    QTimer longest;
    QRect ring; // its outer edge
};

// Of a control's widget, which lies on one; null elsewhere.
ContentArea* ContentAreaOf(const QWidget& control);

} // namespace larkspool
