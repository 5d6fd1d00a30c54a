#include "platform/qt/ContentArea.h"

#include <QPainter>

#include <utility>

namespace larkspool {

namespace {

constexpr int lineMarginLeft = 20;
constexpr int lineMarginRight = 14;
constexpr int longestHold = 45; // ms, a little more than from one row of the waterfall to the next

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
        longest.start(longestHold);
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
        painter.fillRect(lineMarginLeft, y, width() - lineMarginLeft - lineMarginRight, 1, tone);
    }
}

ContentArea* ContentAreaOf(const QWidget& control) {
    return dynamic_cast<ContentArea*>(control.parentWidget());
}

} // namespace larkspool
