#include "platform/qt/ContentArea.h"

#include <QPainter>

#include <utility>

namespace larkspool {

namespace {

constexpr int LineMarginLeft = 20;
constexpr int LineMarginRight = 14;
constexpr int LongestHold = 45; // ms, a little more than from one row of the waterfall to the next

} // namespace

ContentArea::ContentArea(std::vector<int> lines, QWidget* parent)
    : QWidget(parent), hairlines(std::move(lines)) {
    longest.setSingleShot(true);
    connect(&longest, &QTimer::timeout, this, [this] { ReleaseHeld(); });
}

void ContentArea::Hold(QWidget& control) {
    if (!control.isVisible() || !control.updatesEnabled()) {
        return;
    }
    control.setUpdatesEnabled(false);
    held.push_back(&control);
    if (!longest.isActive()) {
        longest.start(LongestHold);
    }
}

void ContentArea::ReleaseHeld() {
    longest.stop();
    for (QWidget* control : std::exchange(held, {})) {
        control->setUpdatesEnabled(true); // which asks for a paint
    }
}

void ContentArea::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor tone = palette().color(QPalette::Midlight);
    for (const int y : hairlines) {
        painter.fillRect(LineMarginLeft, y, width() - LineMarginLeft - LineMarginRight, 1, tone);
    }
}

ContentArea* ContentAreaOf(const QWidget& control) {
    return dynamic_cast<ContentArea*>(control.parentWidget());
}

} // namespace larkspool
