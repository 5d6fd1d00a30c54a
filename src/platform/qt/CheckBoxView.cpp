#include "platform/qt/CheckBoxView.h"

#include "platform/qt/ContentArea.h"
#include "platform/qt/MakeChild.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionButton>

namespace larkspool {

CheckBoxView::CheckBoxView(CheckBox& box, Desktop& theDesktop, QWidget& content)
    : ViewOf(box, theDesktop, MakeChild<QCheckBox>(content)) {
    shape.setText(QString::fromStdString(box.caption));
    CheckBoxView::Redraw(Aspect::Value);
    connect(&shape, &QCheckBox::toggled, this,
            [this](bool ticked) { Raise([this, ticked] { Held()->SetValue(ticked); }); });
}

void CheckBoxView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Value) {
        const QSignalBlocker quiet(shape);
        shape.setChecked(Held()->Value());
    }
}

bool CheckBoxView::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    const bool moves = type == QEvent::Move || type == QEvent::Resize;
    if (type == QEvent::FocusIn || type == QEvent::FocusOut || (moves && shape.hasFocus())) {
        ShowFocus();
    }
    return ViewOf::eventFilter(watched, event);
}

// A ticked box has the color that marks the focus elsewhere, so it needs a ring.
void CheckBoxView::ShowFocus() const {
    ContentArea* const area = ContentAreaOf(shape);
    if (area == nullptr) {
        return;
    }
    QStyleOptionButton option;
    option.initFrom(&shape);
    const QRect box = shape.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &shape);
    area->SetRing(shape.hasFocus() ? box.translated(shape.pos()) : QRect());
}

} // namespace larkspool
