#include "platform/qt/TextFieldView.h"

#include "platform/qt/MakeChild.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace larkspool {

namespace {

// The steps of a key, 0 for other keys.
double StepsOf(const QKeyEvent& key) {
    const auto modifiers = key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool isFine = modifiers == Qt::ShiftModifier;
    if (modifiers != Qt::NoModifier && !isFine) {
        return 0;
    }
    switch (key.key()) {
    case Qt::Key_Up:
        return isFine ? 0.1 : 1;
    case Qt::Key_Down:
        return isFine ? -0.1 : -1;
    case Qt::Key_PageUp:
        return isFine ? 0 : 10;
    case Qt::Key_PageDown:
        return isFine ? 0 : -10;
    default:
        return 0;
    }
}

} // namespace

TextFieldView::TextFieldView(TextField& field, Desktop& theDesktop, QWidget& content)
    : ViewOf(field, theDesktop, MakeChild<QLineEdit>(content)) {
    shape.setPlaceholderText(QString::fromStdString(field.placeholder));
    TextFieldView::Redraw(Aspect::Value);
    connect(&shape, &QLineEdit::textChanged, this, [this](const QString& text) {
        Raise([this, &text] { Held()->SetText(text.toStdString()); });
    });
    connect(&shape, &QLineEdit::returnPressed, this,
            [this] { Raise([this] { Held()->PressReturn(); }); });
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
    if (event->type() == QEvent::KeyPress && Held() != nullptr && Held()->TakesSteps()) {
        const double steps = StepsOf(static_cast<const QKeyEvent&>(*event));
        if (steps != 0) {
            Raise([this, steps] { Held()->Step(steps); });
            return true;
        }
    }
    return ViewOf::eventFilter(watched, event);
}

} // namespace larkspool
