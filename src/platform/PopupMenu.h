#pragma once

#include "platform/Control.h"

#include <string>
#include <vector>

namespace larkspool {

// A row of many, one of which shows.
class PopupMenu : public Control {
  public:
    int ListCount() const { return static_cast<int>(rows.size()); }
    int ListIndex() const { return listIndex; } // -1: none
    const std::string& RowText(int row) const;  // "" outside the rows
    const std::string& Text() const { return RowText(listIndex); }

    void AddRow(std::string text);
    void DeleteAllRows(); // leaves no row chosen; raises nothing

    // A different row raises change before the setter returns; an index outside the rows is
    // ignored.
    void SetListIndex(int row);

    // The user's hand: Press opens the popup, Pick chooses a row. Picking counts as a press first,
    // and raises change even if the row is the one that shows.
    void Press() const;
    void Pick(int row);

    std::function<void()> change;
    std::function<void()> mouseDown;

  private:
    std::vector<std::string> rows;
    int listIndex = -1;
};

} // namespace larkspool
