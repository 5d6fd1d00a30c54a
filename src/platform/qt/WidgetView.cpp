#include "platform/qt/WidgetView.h"

#include "platform/Desktop.h"

#include <QEvent>
#include <QPoint>
#include <QWheelEvent>

namespace larkspool {

namespace {

constexpr int AnglePerPixel = 2; // 120ths of a step, for devices that report only pixels

QPoint AngleOf(const QWheelEvent& event) {
    return event.angleDelta().isNull() ? event.pixelDelta() * AnglePerPixel : event.angleDelta();
}

} // namespace

WidgetView::WidgetView(Control& control, Desktop& theDesktop, QWidget& shown)
    : ControlView(control), desktop(theDesktop), widget(shown) {
    widget.setObjectName(QString::fromStdString(control.Name()));
    widget.setAccessibleName(QString::fromStdString(control.spokenName));
    widget.setEnabled(control.Enabled());
    widget.setVisible(control.Visible());
    const Rect& place = control.Bounds();
    widget.setGeometry(place.left, place.top, place.width, place.height);
    if (widget.focusPolicy() == Qt::WheelFocus) {
        widget.setFocusPolicy(Qt::StrongFocus); // the wheel must not move the keyboard focus
    }
    widget.installEventFilter(this);
}

void WidgetView::Changed(Aspect aspect) {
    switch (aspect) {
    case Aspect::Enabled:
        widget.setEnabled(Model()->Enabled());
        break;
    case Aspect::Visible:
        widget.setVisible(Model()->Visible());
        break;
    case Aspect::Bounds:
        Place();
        break;
    default:
        Redraw(aspect);
    }
}

void WidgetView::Place() {
    const Rect& place = Model()->Bounds();
    widget.setGeometry(place.left, place.top, place.width, place.height);
}

void WidgetView::Raise(const std::function<void()>& call) const {
    if (Model() != nullptr) {
        desktop.Raise(call);
    }
}

bool WidgetView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &widget || Model() == nullptr) {
        return QObject::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::Enter:
        Raise(Model()->mouseEnter);
        break;
    case QEvent::Leave:
        Raise(Model()->mouseExit);
        break;
    case QEvent::Wheel:
        return TurnWheel(*event);
    case QEvent::Show:
        BecameVisible();
        break;
    default:
        break;
    }
    return false;
}

// The wheel acts only on controls that handle it, so Qt's own use of it is disabled.
bool WidgetView::TurnWheel(QEvent& event) const {
    event.setAccepted(Model()->TakesWheel());
    if (event.isAccepted()) {
        const QPoint angle = AngleOf(static_cast<const QWheelEvent&>(event));
        Raise([this, angle] { Model()->Wheel(angle.x(), angle.y()); });
    }
    return true;
}

} // namespace larkspool
