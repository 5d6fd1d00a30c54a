#include "platform/qt/LabelView.h"

#include "platform/qt/ContentArea.h"
#include "platform/qt/Fonts.h"
#include "platform/qt/MakeChild.h"

#include <QPalette>

namespace larkspool {

LabelView::LabelView(Label& label, Desktop& host, QWidget& content, const Window& home)
    : ViewOf(label, host, MakeChild<QLabel>(content)), window(home) {
    shape.setTextFormat(Qt::PlainText);
    shape.setAutoFillBackground(true); // spares the window painting beneath
    // Labels may reach under other controls and mustn't take the mouse from them.
    shape.setAttribute(Qt::WA_TransparentForMouseEvents, !label.mouseEnter && !label.mayBeCut);
    LabelView::Redraw(Aspect::Value);
    LabelView::Redraw(Aspect::Colour);
}

void LabelView::Place() {
    const Rect& place = Held()->Bounds();
    // A label of fixed size asks nobody to lay out anything when its text changes.
    shape.setFixedSize(RoomForLabel(window, *Held()), place.height);
    shape.move(place.left, place.top);
    if (Held()->mayBeCut) {
        ShowCut();
    }
}

// A screen reader is given the whole text too.
void LabelView::ShowCut() {
    const QString whole = QString::fromStdString(Held()->Text());
    const QString shown = shape.fontMetrics().elidedText(whole, Qt::ElideRight, shape.width());
    const QString rest = shown == whole ? QString() : whole;
    shape.setToolTip(rest);
    if (shape.accessibleName() != rest) {
        shape.setAccessibleName(rest);
    }
    shape.setText(shown);
}

void LabelView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Value) {
        if (ContentArea* const area = ContentAreaOf(shape)) {
            area->Hold(shape);
        }
        if (Held()->mayBeCut) {
            ShowCut();
        } else {
            shape.setText(QString::fromStdString(Held()->Text()));
        }
    } else if (aspect == Aspect::Colour && Held()->TextColor()) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, QColor(Held()->TextColor()->Packed()));
        shape.setPalette(palette);
    }
}

} // namespace larkspool
