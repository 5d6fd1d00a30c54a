#include "platform/qt/EditRoles.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>

namespace larkspool {

namespace {

bool ClipboardHasText() {
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    return content != nullptr && content->hasText();
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

bool CanEdit(MenuRole role, const QLineEdit* field) {
    if (field == nullptr) {
        return false;
    }
    const bool writable = !field->isReadOnly();
    switch (role) {
    case MenuRole::Undo:
        return writable && field->isUndoAvailable();
    case MenuRole::Cut:
    case MenuRole::Clear:
        return writable && field->hasSelectedText();
    case MenuRole::Copy:
        return field->hasSelectedText();
    case MenuRole::Paste:
        return writable && ClipboardHasText();
    default:
        return true;
    }
}

void Edit(MenuRole role, QLineEdit& field) {
    switch (role) {
    case MenuRole::Undo:
        field.undo();
        break;
    case MenuRole::Cut:
        field.cut();
        break;
    case MenuRole::Copy:
        field.copy();
        break;
    case MenuRole::Paste:
        field.paste();
        break;
    case MenuRole::Clear:
        if (field.hasSelectedText()) {
            field.del();
        }
        break;
    case MenuRole::SelectAll:
        field.selectAll();
        break;
    default:
        break;
    }
}

} // namespace larkspool
