#include "platform/Listbox.h"

#include "platform/Text.h"

#include <iterator>
#include <utility>

namespace larkspool {

std::string Listbox::Cut(std::string text) const {
    if (maximumRowLength > 0 && text.size() > maximumRowLength) {
        return CutUtf8(text, maximumRowLength);
    }
    return text;
}

const std::string& Listbox::Cell(int row, int column) const {
    static const std::string none;
    if (row < 0 || row >= ListCount() || column < 0) {
        return none;
    }
    const auto& cells = rows[static_cast<std::size_t>(row)];
    const auto index = static_cast<std::size_t>(column);
    return index < cells.size() ? cells[index] : none;
}

void Listbox::AddRow(std::string firstCell) {
    rows.push_back({Cut(std::move(firstCell))});
    if (maximumRows > 0 && rows.size() > maximumRows) {
        rows.pop_front();
        if (listIndex >= 0) {
            --listIndex;
        }
    }
    Notify(Aspect::Rows);
}

void Listbox::SetCell(int row, int column, std::string text) {
    const auto index = static_cast<std::size_t>(column);
    if (row < 0 || row >= ListCount() || column < 0 || index >= columns.size()) {
        return;
    }
    auto& cells = rows[static_cast<std::size_t>(row)];
    if (cells.size() <= index) {
        cells.resize(index + 1);
    }
    if (cells[index] != text) {
        cells[index] = Cut(std::move(text));
        Notify(Aspect::Value);
    }
}

void Listbox::DeleteRow(int row) {
    if (row < 0 || row >= ListCount()) {
        return;
    }
    rows.erase(std::next(rows.begin(), row));
    if (listIndex == row) {
        listIndex = -1;
    } else if (listIndex > row) {
        --listIndex;
    }
    Notify(Aspect::Rows);
}

void Listbox::DeleteAllRows() {
    rows.clear();
    listIndex = -1;
    Notify(Aspect::Rows);
}

void Listbox::SetListIndex(int row) {
    if (row >= -1 && row < ListCount() && row != listIndex) {
        listIndex = row;
        Notify(Aspect::Value);
    }
}

} // namespace larkspool
