#pragma once

#include "platform/Timer.h"

#include <QTimer>

namespace larkspool {

class Desktop;

// A timer on QTimer. Owned by the caller of Desktop::MakeTimer.
class QtTimer : public Timer {
  public:
    explicit QtTimer(Desktop& theDesktop);

    void SetPeriod(int milliseconds) override;
    void SetMode(Mode wanted) override;
    Mode RunMode() const override { return mode; }

  private:
    void Fire();

    Desktop& desktop;
    QTimer timer;
    Mode mode = Mode::Off;
};

} // namespace larkspool
