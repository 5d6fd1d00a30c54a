#pragma once

#include "platform/ProgressBar.h"
#include "platform/qt/WidgetView.h"

#include <QProgressBar>
#include <QString>

#include <functional>

namespace larkspool {

// A flat bar that goes from green to red.
class MeterBar : public QProgressBar {
  public:
    using QProgressBar::QProgressBar;

    std::function<double(int)> quantity; // a value in its unit
    std::function<QString()> spoken;     // the current value with its unit

    int LitPixels(int amount) const; // of the screen, for a value
    void SetQuietly(int amount);     // without a paint; the caller requests it

  protected:
    void paintEvent(QPaintEvent* event) override;
};

class ProgressBarView : public ViewOf<ProgressBar, MeterBar> {
  public:
    ProgressBarView(ProgressBar& bar, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;

  private:
    double QuantityOf(int value) const;
};

} // namespace larkspool
