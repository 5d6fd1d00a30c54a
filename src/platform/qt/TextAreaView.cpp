#include "platform/qt/TextAreaView.h"

#include "platform/qt/MakeChild.h"

#include <QTextCursor>
#include <QTimer>

namespace larkspool {

TextAreaView::TextAreaView(TextArea& area, Desktop& theDesktop, QWidget& content)
    : ViewOf(area, theDesktop, MakeChild<QPlainTextEdit>(content)), isStale(true) {
    shape.setReadOnly(true);
    shape.setUndoRedoEnabled(false);
    shape.setTabChangesFocus(true);
}

void TextAreaView::Redraw(Aspect aspect) {
    if (aspect != Aspect::Value || isStale) {
        return;
    }
    isStale = true;
    if (shape.isVisible()) {
        QTimer::singleShot(0, this, [this] { CatchUp(); });
    }
}

void TextAreaView::CatchUp() {
    if (!isStale || Held() == nullptr) {
        return;
    }
    isStale = false;
    shape.setPlainText(QString::fromStdString(Held()->Text()));
    shape.moveCursor(QTextCursor::End);
}

} // namespace larkspool
