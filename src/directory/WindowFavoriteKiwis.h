#pragma once

#include "directory/FavoritesFile.h"
#include "platform/Desktop.h"
#include "platform/Listbox.h"

#include <vector>

namespace larkspool {

class App;

// The editor of the favorites: the user edits the cells, and closing the window saves the changes.
// Owned by App from its opening to its closing; only one is open at a time.
class WindowFavoriteKiwis : public Window {
  public:
    WindowFavoriteKiwis(Desktop& theDesktop, App& application);

    void Event_Open();
    bool Event_CancelClose(bool appQuitting) override;

    Listbox Listbox1; // host, port, name

  private:
    void Listbox1_Open();
    void LoadEntries();
    void SaveEntries();
    FavoriteCells CellsOf(int row) const;
    void AddRow(const FavoriteCells& cells);
    bool Listbox1_ConstructContextualMenu(std::vector<MenuItem>& items) const;
    bool Listbox1_ContextualMenuAction(const MenuItem& item);
    FolderItem File() const;

    App& app;
    std::vector<FavoriteCells> loaded; // the rows as they were read
    bool isUnread = false;             // the file exists but can't be read: it must not be replaced
};

} // namespace larkspool
