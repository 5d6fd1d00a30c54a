#pragma once

#include "directory/FavoritesFile.h"
#include "platform/Desktop.h"
#include "platform/Listbox.h"

#include <vector>

namespace larkspool {

class App;

// Where the user edits the favourites, in place; a close saves what has changed. Owned by App, one
// at a time, from its opening to its closing.
class WindowFavoriteKiwis : public Window {
  public:
    WindowFavoriteKiwis(Desktop& theDesktop, App& application);

    void Event_Open();
    bool Event_CancelClose(bool appQuitting) override;

    Listbox Listbox1; // host, port, name

  private:
    void LoadEntries();
    void SaveEntries();
    void AddRow(const std::string& host, const std::string& port, const std::string& name);
    std::vector<FavoriteCells> Rows() const;
    bool Listbox1_ConstructContextualMenu(std::vector<MenuItem>& items) const;
    bool Listbox1_ContextualMenuAction(const MenuItem& item);
    FolderItem File() const;

    App& app;
    std::vector<FavoriteCells> loaded; // the rows as they were read
    bool isUnread = false; // there is a file, but it can't be read: nothing may replace it
};

} // namespace larkspool
