#pragma once

#include <QTimer>
#include <QWidget>

#include <vector>

namespace larkspool {

// The window's ground: the hairlines that part its rows. It also gathers what its controls want
// repainted, because each paint of its own means a wait for the display.
class ContentArea : public QWidget {
  public:
    ContentArea(std::vector<int> lines, QWidget* parent);

    // A control that changes several times a second is painted together with the next picture, or
    // after the time of one at the latest.
    void Hold(QWidget& control); // a child; to be called before the change
    void ReleaseHeld();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<int> hairlines;
    std::vector<QWidget*> held; // children, whose paints wait
    QTimer longest;
};

// Of a control's widget, which lies on one; null elsewhere.
ContentArea* ContentAreaOf(const QWidget& control);

} // namespace larkspool
