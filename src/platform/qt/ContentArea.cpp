#include "platform/qt/ContentArea.h"

#include <QPainter>

#include <utility>

namespace larkspool {

namespace {

constexpr int LineMarginLeft = 20;
constexpr int LineMarginRight = 14;
constexpr int RingWidth = 2;
constexpr int RingGap = 1;
constexpr double RingRadius = 5.5; // in the middle of its line
constexpr int LongestHold = 45; // ms, a little more than from one row of the waterfall to the next

} // namespace

ContentArea::ContentArea(std::vector<int> lines, QWidget* parent)
    : QWidget(parent), hairlines(std::move(lines)) {
    longest.setSingleShot(true);
    connect(&longest, &QTimer::timeout, this, [this] { ReleaseHeld(); });
}

void ContentArea::ChangeHeld(QWidget& control, const std::function<void()>& change) {
    Hold(control);
    change();
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
        control->setUpdatesEnabled(true); // this requests a paint
    }
}

void ContentArea::SetRing(const QRect& around) {
    constexpr int Reach = RingWidth + RingGap;
    const QRect place = around.isEmpty() ? QRect() : around.adjusted(-Reach, -Reach, Reach, Reach);
    if (place != ring) {
        update(ring.united(place));
        ring = place;
    }
}

void ContentArea::PaintRing(QPainter& painter) const {
    constexpr double Half = RingWidth / 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Link), RingWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(ring).adjusted(Half, Half, -Half, -Half), RingRadius,
                            RingRadius);
}

void ContentArea::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor tone = palette().color(QPalette::Midlight);
    for (const int y : hairlines) {
        painter.fillRect(LineMarginLeft, y, width() - LineMarginLeft - LineMarginRight, 1, tone);
    }
    if (!ring.isEmpty()) {
        PaintRing(painter);
    }
}

ContentArea* ContentAreaOf(const QWidget& control) {
    return dynamic_cast<ContentArea*>(control.parentWidget());
}

} // namespace larkspool
