#include "platform/qt/QtTimer.h"

#include "platform/Desktop.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr int FinePeriod = 50; // ms; below it a deviation of 5 % would be heard or seen

} // namespace

QtTimer::QtTimer(Desktop& theDesktop) : desktop(theDesktop) {
    timer.setInterval(1000);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { Fire(); });
}

void QtTimer::SetPeriod(int milliseconds) {
    const int period = std::max(1, milliseconds);
    timer.setTimerType(period < FinePeriod ? Qt::PreciseTimer : Qt::CoarseTimer);
    if (period != timer.interval()) {
        timer.setInterval(period);
    }
}

void QtTimer::SetMode(Mode wanted) {
    mode = wanted;
    if (mode == Mode::Off) {
        timer.stop();
        return;
    }
    timer.setSingleShot(mode == Mode::Single);
    timer.start();
}

void QtTimer::Fire() {
    if (mode == Mode::Single) {
        mode = Mode::Off;
    }
    desktop.Raise(action);
}

} // namespace larkspool
