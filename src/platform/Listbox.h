#pragma once

#include "platform/Control.h"
#include "platform/Menu.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace larkspool {

// A table of text cells.
class Listbox : public Control {
  public:
    struct Column {
        std::string heading;
        int width = 0;  // points; 0 with weight 0 hides the column
        int weight = 0; // share of the width that the fixed columns leave
        bool editable = false;
    };

    int ListCount() const { return static_cast<int>(rows.size()); }
    int LastIndex() const { return ListCount() - 1; }
    int ListIndex() const { return listIndex; }         // -1: none
    const std::string& Cell(int row, int column) const; // "" outside the table

    void AddRow(std::string firstCell); // beyond maximumRows the oldest row is deleted
    void SetCell(int row, int column, std::string text);
    void DeleteRow(int row);
    void DeleteAllRows();
    void SetListIndex(int row); // -1: none; any other index outside the rows is ignored

    std::vector<Column> columns = std::vector<Column>(1);
    bool hasHeader = false;
    std::string placeholder;          // shown while there is no row
    std::size_t maximumRows = 0;      // 0: no limit
    std::size_t maximumRowLength = 0; // bytes per cell, cut between characters; 0: no limit

    // Fills the items of a context menu; false: no menu.
    std::function<bool(std::vector<MenuItem>& items)> constructContextualMenu;
    std::function<bool(const MenuItem& item)> contextualMenuAction;

  private:
    std::string Cut(std::string text) const;

    std::deque<std::vector<std::string>> rows;
    int listIndex = -1;
};

} // namespace larkspool
