#pragma once

#include "platform/Listbox.h"
#include "platform/qt/ListboxTable.h"
#include "platform/qt/WidgetView.h"

namespace larkspool {

// Updates its rows once per turn of the event loop, and only while it is visible.
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
    bool isFollowing = false; // the program changes the selection, not the user
};

} // namespace larkspool
