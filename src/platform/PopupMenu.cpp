#include "platform/PopupMenu.h"

#include <cstddef>
#include <utility>

namespace larkspool {

const std::string& PopupMenu::RowText(int row) const {
    static const std::string none;
    return row >= 0 && row < ListCount() ? rows[static_cast<std::size_t>(row)] : none;
}

void PopupMenu::AddRow(std::string text) {
    rows.push_back(std::move(text));
    Notify(Aspect::Rows);
}

void PopupMenu::DeleteAllRows() {
    rows.clear();
    listIndex = -1;
    Notify(Aspect::Rows);
}

void PopupMenu::SetListIndex(int row) {
    if (row < 0 || row >= ListCount() || row == listIndex) {
        return;
    }
    listIndex = row;
    Notify(Aspect::Value);
    if (change) {
        change();
    }
}

void PopupMenu::Press() const {
    if (mouseDown) {
        mouseDown();
    }
}

void PopupMenu::Pick(int row) {
    if (row < 0 || row >= ListCount()) {
        return;
    }
    Press();
    listIndex = row;
    Notify(Aspect::Value);
    if (change) {
        change();
    }
}

} // namespace larkspool
