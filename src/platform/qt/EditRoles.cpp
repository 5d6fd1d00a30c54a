#include "platform/qt/EditRoles.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

namespace larkspool {

namespace {

// What is asked of a text control before an editing item is offered.
struct TextState {
    bool isText = false;
    bool isReadOnly = true;
    bool hasSelection = false;
    bool hasUndo = false;
};

TextState StateOf(const QWidget* widget) {
    if (const auto* line = dynamic_cast<const QLineEdit*>(widget)) {
        return {true, line->isReadOnly(), line->hasSelectedText(), line->isUndoAvailable()};
    }
    if (const auto* area = dynamic_cast<const QPlainTextEdit*>(widget)) {
        return {true, area->isReadOnly(), area->textCursor().hasSelection(),
                area->document()->isUndoAvailable()};
    }
    return {};
}

bool ClipboardHasText() {
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    return content != nullptr && content->hasText();
}

void DeleteSelection(QLineEdit& line) {
    if (line.hasSelectedText()) {
        line.del();
    }
}

void DeleteSelection(QPlainTextEdit& area) { area.textCursor().removeSelectedText(); }

template <typename Text>
void EditIn(Text& text, MenuRole role) {
    switch (role) {
    case MenuRole::Undo:
        text.undo();
        break;
    case MenuRole::Cut:
        text.cut();
        break;
    case MenuRole::Copy:
        text.copy();
        break;
    case MenuRole::Paste:
        text.paste();
        break;
    case MenuRole::Clear:
        DeleteSelection(text);
        break;
    case MenuRole::SelectAll:
        text.selectAll();
        break;
    default:
        break;
    }
}

} // namespace

bool IsEditRole(MenuRole role) {
    switch (role) {
    case MenuRole::Undo:
    case MenuRole::Cut:
    case MenuRole::Copy:
    case MenuRole::Paste:
    case MenuRole::Clear:
    case MenuRole::SelectAll:
        return true;
    default:
        return false;
    }
}

bool IsTextControl(const QWidget* widget) { return StateOf(widget).isText; }

bool CanEdit(MenuRole role, const QWidget* text) {
    const TextState state = StateOf(text);
    switch (role) {
    case MenuRole::Undo:
        return state.hasUndo && !state.isReadOnly;
    case MenuRole::Cut:
    case MenuRole::Clear:
        return state.hasSelection && !state.isReadOnly;
    case MenuRole::Copy:
        return state.hasSelection;
    case MenuRole::Paste:
        return state.isText && !state.isReadOnly && ClipboardHasText();
    default:
        return state.isText;
    }
}

void Edit(MenuRole role, QWidget* text) {
    if (auto* line = dynamic_cast<QLineEdit*>(text)) {
        EditIn(*line, role);
    } else if (auto* area = dynamic_cast<QPlainTextEdit*>(text)) {
        EditIn(*area, role);
    }
}

} // namespace larkspool
