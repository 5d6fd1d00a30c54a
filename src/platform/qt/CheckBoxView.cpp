#include "platform/qt/CheckBoxView.h"

#include "platform/qt/MakeChild.h"

#include <QSignalBlocker>

namespace larkspool {

CheckBoxView::CheckBoxView(CheckBox& box, Desktop& host, QWidget& content)
    : ViewOf(box, host, MakeChild<QCheckBox>(content)) {
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

} // namespace larkspool
