#include "platform/qt/PushButtonView.h"

#include "platform/qt/MakeChild.h"

namespace larkspool {

PushButtonView::PushButtonView(PushButton& button, Desktop& theDesktop, QWidget& content)
    : ViewOf(button, theDesktop, MakeChild<QPushButton>(content)) {
    shape.setAutoDefault(true); // the Return key presses it too
    PushButtonView::Redraw(Aspect::Value);
    connect(&shape, &QPushButton::clicked, this, [this] { Raise([this] { Held()->Push(); }); });
}

void PushButtonView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Value) {
        shape.setText(QString::fromStdString(Held()->Caption()));
    }
}

} // namespace larkspool
