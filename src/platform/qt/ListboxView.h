#pragma once

#include "platform/Listbox.h"
#include "platform/qt/ListboxTable.h"
#include "platform/qt/WidgetView.h"

namespace larkspool {

// Catches up with its rows once a turn of the event loop, and only while it can be seen.
class ListboxView : public ViewOf<Listbox, Table> {
  public:
    ListboxView(Listbox& listbox, Desktop& theDesktop, QWidget& content);

    void CommitEdit() override { shape.CommitEdit(); }

  protected:
    void Redraw(Aspect aspect) override;
    void BecameVisible() override { CatchUp(); }

  private:
    void CatchUp();
    void ShowSelection();
    void TakeSelection();
    void ShowContextMenu(QPoint place);
    void Write(int row, int column, const std::string& text);

    ListboxCells cells;
    bool isStale = true;
    bool isFollowing = false; // a change of the selection is the program's, not the user's
};

} // namespace larkspool
