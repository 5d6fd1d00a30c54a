#include "platform/qt/TextFieldView.h"

#include "platform/qt/MakeChild.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace larkspool {

namespace {

constexpr int UnitsPerStep = 120;

// The turn of the wheel that an arrow key stands for, 0 for other keys.
int TurnOf(const QKeyEvent& key) {
    const auto others = key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (others != Qt::NoModifier) {
        return 0;
    }
    return key.key() == Qt::Key_Up ? UnitsPerStep : key.key() == Qt::Key_Down ? -UnitsPerStep : 0;
}

} // namespace

TextFieldView::TextFieldView(TextField& field, Desktop& host, QWidget& content)
    : ViewOf(field, host, MakeChild<QLineEdit>(content)) {
    shape.setPlaceholderText(QString::fromStdString(field.placeholder));
    TextFieldView::Redraw(Aspect::Value);
    connect(&shape, &QLineEdit::textChanged, this, [this](const QString& text) {
        Raise([this, &text] { Held()->SetText(text.toStdString()); });
    });
}

void TextFieldView::Redraw(Aspect aspect) {
    const QString text = QString::fromStdString(Held()->Text());
    if (aspect != Aspect::Value || text == shape.text()) {
        return;
    }
    const int cursor = shape.hasFocus() ? shape.cursorPosition() : 0;
    const QSignalBlocker quiet(shape);
    shape.setText(text);
    shape.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
}

bool TextFieldView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && Held() != nullptr && Held()->TakesWheel()) {
        const int turn = TurnOf(static_cast<const QKeyEvent&>(*event));
        if (turn != 0) {
            Raise([this, turn] { Held()->Wheel(0, turn); });
            return true;
        }
    }
    return ViewOf::eventFilter(watched, event);
}

} // namespace larkspool
