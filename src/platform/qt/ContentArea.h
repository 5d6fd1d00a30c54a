#pragma once

#include <QRect>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

namespace larkspool {

// The window's background: the fine lines between its rows, and the ring around a check box that
// has the keyboard focus, for which the box itself has no room. It also combines the paints of its
// controls, because each separate paint waits for the display.
class ContentArea : public QWidget {
  public:
    ContentArea(std::vector<int> lines, QWidget* parent);

    // Changes a child that changes several times a second. Its paint waits for the next picture,
    // or for the time of one at the latest.
    void ChangeHeld(QWidget& control, const std::function<void()>& change);
    void ReleaseHeld();

    void SetRing(const QRect& around); // what the ring encloses; empty: no ring

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void Hold(QWidget& control);
    void PaintRing(QPainter& painter) const;

    std::vector<int> hairlines;
    std::vector<QWidget*> held; // children whose paints wait
    QTimer longest;
    QRect ring; // its outer edge
};

// The parent of a control's widget; null if it is not a content area.
ContentArea* ContentAreaOf(const QWidget& control);

} // namespace larkspool
