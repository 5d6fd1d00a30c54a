#pragma once

#include "platform/ProgressBar.h"
#include "platform/qt/WidgetView.h"

#include <QProgressBar>
#include <QString>

#include <functional>

namespace larkspool {

// A flat bar whose colour warms towards its end.
class MeterBar : public QProgressBar {
  public:
    using QProgressBar::QProgressBar;

    std::function<double(int)> quantity; // a value in its unit
    std::function<QString()> spoken;     // the present one, with the unit

    int LitPixels(int amount) const; // of the screen's, for a value
    void SetQuietly(int amount);     // the caller asks for the paint

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
