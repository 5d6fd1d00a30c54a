// The popup of receivers: what is in it, and what a pick does.
#include "console/Window1.h"
#include "directory/FavoritesFile.h"
#include "directory/KiwiListClass.h"
#include "directory/SiteReceivers.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

void Window1::GetKiwiList() {
    app.theKiwiList = std::make_unique<KiwiListClass>(desktop);
    app.theKiwiList->received = [this] { KiwiListReceived(); };
    app.theKiwiList->Init(app.deployment.directoryHost);
}

void Window1::KiwiListReceived() {
    constexpr int RowsToStartWith = 6;
    AddFavoriteKiwis();
    AddMyKiwis();
    PopupMenuKiwiList.DeleteAllRows();
    for (const std::string& name : app.theKiwiList->names) {
        PopupMenuKiwiList.AddRow(name);
    }
    const int last = std::min(RowsToStartWith, PopupMenuKiwiList.ListCount()) - 1;
    PopupMenuKiwiList.SetListIndex(static_cast<int>(app.myRandom.InRange(0, last)));
}

// A file beside the program takes over, here but not in the editor.
void Window1::AddFavoriteKiwis() {
    const FolderItem file =
        desktop.BesideProgramOrIn(SpecialFolder::ApplicationData, FavoritesFileName);
    if (auto favorites = ReadFavorites(file)) {
        favorites->receivers.Reverse(); // the latest entry on top
        app.theKiwiList->PutInFront(favorites->receivers);
    }
}

void Window1::AddMyKiwis() { app.theKiwiList->PutInFront(SiteReceivers(app.deployment)); }

void Window1::PopupMenuKiwiList_MouseDown() { gotKiwiPopupMouseDown = true; }

void Window1::PopupMenuKiwiList_Change() {
    if (!gotKiwiPopupMouseDown) {
        return;
    }
    gotKiwiPopupMouseDown = false;
    // While a list is being fetched, the rows are still those of the one before.
    const int row = PopupMenuKiwiList.ListIndex();
    const auto index = static_cast<std::size_t>(row);
    if (row < 0 || app.theKiwiList == nullptr || index >= app.theKiwiList->Count()) {
        return;
    }
    TextFieldAddress.SetText(app.theKiwiList->urls[index]);
    TextFieldPort.SetText(Str(app.theKiwiList->ports[index]));
}

} // namespace larkspool
