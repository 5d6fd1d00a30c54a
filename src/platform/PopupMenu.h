#pragma once

#include "platform/Control.h"

#include <string>
#include <vector>

namespace larkspool {

// A list of rows, one of which is chosen and shown.
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

    // The user's actions: Press opens the popup, Pick chooses a row. Pick includes a press, and
    // raises change even for the row that is shown.
    void Press() const;
    void Pick(int row);

    std::function<void()> change;
    std::function<void()> mouseDown;

  private:
    std::vector<std::string> rows;
    int listIndex = -1;
};

} // namespace larkspool
