#pragma once

#include "platform/ProgressBar.h"
#include "platform/qt/WidgetView.h"

#include <QProgressBar>

namespace larkspool {

// A flat bar whose colour warms towards its end.
class MeterBar : public QProgressBar {
  public:
    using QProgressBar::QProgressBar;

    int LitPixels(int amount) const; // of the screen's, for a value
    void SetQuietly(int amount);     // the caller asks for the paint

  protected:
    void paintEvent(QPaintEvent* event) override;
};

class ProgressBarView : public ViewOf<ProgressBar, MeterBar> {
  public:
    ProgressBarView(ProgressBar& bar, Desktop& host, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;
};

} // namespace larkspool
