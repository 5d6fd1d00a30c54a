#include "platform/qt/ProgressBarView.h"

#include "platform/Text.h"
#include "platform/qt/ContentArea.h"
#include "platform/qt/MakeChild.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace larkspool {

namespace {

constexpr int BarHeight = 12;
constexpr double Radius = 3;

QLinearGradient MeterColors(const QRectF& bar) {
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    gradient.setColorAt(0, QColor(43, 161, 150));
    gradient.setColorAt(0.45, QColor(67, 176, 96));
    gradient.setColorAt(0.75, QColor(226, 178, 62));
    gradient.setColorAt(1, QColor(217, 84, 77));
    return gradient;
}

} // namespace

int MeterBar::LitPixels(int amount) const {
    return qRound(width() * devicePixelRatioF() * amount / std::max(1, maximum()));
}

// By default the bar paints before the setter returns, even if no pixel changes.
void MeterBar::SetQuietly(int amount) {
    const bool enabled = updatesEnabled();
    setAttribute(Qt::WA_UpdatesDisabled);
    setValue(amount);
    setAttribute(Qt::WA_UpdatesDisabled, !enabled);
}

void MeterBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF bar(0, (height() - BarHeight) / 2.0, width(), BarHeight);
    painter.setBrush(palette().brush(QPalette::Midlight));
    painter.drawRoundedRect(bar, Radius, Radius);
    const double lit = LitPixels(value()) / devicePixelRatioF();
    painter.setClipRect(QRectF(bar.left(), bar.top(), lit, bar.height()));
    painter.setBrush(MeterColors(bar));
    painter.drawRoundedRect(bar, Radius, Radius);
}

ProgressBarView::ProgressBarView(ProgressBar& bar, Desktop& theDesktop, QWidget& content)
    : ViewOf(bar, theDesktop, MakeChild<MeterBar>(content)) {
    shape.setTextVisible(false);
    shape.quantity = [this](int value) { return QuantityOf(value); };
    shape.spoken = [this] {
        const std::string unit = Held() == nullptr ? std::string() : " " + Held()->unit;
        return QString::fromStdString(Str(QuantityOf(shape.value())) + unit);
    };
    shape.setAutoFillBackground(true); // the window need not paint below it
    ProgressBarView::Redraw(Aspect::Value);
}

double ProgressBarView::QuantityOf(int value) const {
    return Held() != nullptr && Held()->quantity ? Held()->quantity(value) : value;
}

void ProgressBarView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Value) {
        const int maximum = std::max(1, Held()->maximum);
        const int amount = std::clamp(Held()->Value(), 0, maximum);
        shape.setRange(0, maximum);
        const auto set = [this, amount] { shape.SetQuietly(amount); };
        ContentArea* const area = ContentAreaOf(shape);
        if (area != nullptr && shape.LitPixels(amount) != shape.LitPixels(shape.value())) {
            area->ChangeHeld(shape, set);
        } else {
            set();
        }
    }
}

} // namespace larkspool
