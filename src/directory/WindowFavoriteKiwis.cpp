#include "directory/WindowFavoriteKiwis.h"

#include "platform/ReplaceFile.h"
#include "shell/App.h"

#include <array>
#include <utility>

namespace larkspool {

namespace {

constexpr int DesignWidth = 600;
constexpr int DesignHeight = 400;

enum ContextItem { Add = 1, Delete = 2 };

MenuItem ItemFor(std::string caption, ContextItem index) {
    MenuItem item;
    item.caption = std::move(caption);
    item.index = index;
    return item;
}

} // namespace

WindowFavoriteKiwis::WindowFavoriteKiwis(Desktop& theDesktop, App& application)
    : Window(theDesktop), app(application) {
    SetTitle("Favorite Kiwis");
    SetDesignSize(DesignWidth, DesignHeight);
    Listbox1_Open();
    AddControl(Listbox1);
}

void WindowFavoriteKiwis::Listbox1_Open() {
    Listbox1.Place("Listbox1", {0, 0, DesignWidth, DesignHeight},
                   {.left = true, .top = true, .right = true, .bottom = true});
    Listbox1.spokenName = "Favorites";
    Listbox1.hasHeader = true;
    Listbox1.placeholder = "The right mouse button adds a favorite.";
    const auto columns = std::to_array<Listbox::Column>({
        {.heading = "URL", .width = 0, .weight = 2, .editable = true},
        {.heading = "Port", .width = 60, .weight = 0, .editable = true},
        {.heading = "Name", .width = 0, .weight = 3, .editable = true},
    });
    static_assert(columns.size() == FavoriteColumns);
    Listbox1.columns.assign(columns.begin(), columns.end());
    Listbox1.constructContextualMenu = [this](std::vector<MenuItem>& items) {
        return Listbox1_ConstructContextualMenu(items);
    };
    Listbox1.contextualMenuAction = [this](const MenuItem& item) {
        return Listbox1_ContextualMenuAction(item);
    };
}

void WindowFavoriteKiwis::Event_Open() { LoadEntries(); }

bool WindowFavoriteKiwis::Event_CancelClose(bool appQuitting) {
    CommitEdits();
    if (!appQuitting && app.EndsWith(*this)) {
        return false; // the program quits next and calls this again
    }
    SaveEntries();
    if (!appQuitting) {
        app.Console().GetKiwiList();
    }
    return false;
}

FolderItem WindowFavoriteKiwis::File() const {
    return *desktop.Folder(SpecialFolder::ApplicationData).Child(FavoritesFileName);
}

void WindowFavoriteKiwis::LoadEntries() {
    Listbox1.DeleteAllRows();
    const auto favorites = ReadFavorites(File());
    isUnread = !favorites;
    if (isUnread) {
        desktop.MsgBox("The favorites in " + File().Path().string() +
                       " could not be read. That file stays as it is: entries made now will not "
                       "be kept.");
        return;
    }
    loaded = favorites->Rows();
    for (const FavoriteCells& cells : loaded) {
        AddRow(cells);
    }
}

FavoriteCells WindowFavoriteKiwis::CellsOf(int row) const {
    FavoriteCells cells;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        cells[column] = Listbox1.Cell(row, static_cast<int>(column));
    }
    return cells;
}

void WindowFavoriteKiwis::AddRow(const FavoriteCells& cells) {
    Listbox1.AddRow("");
    for (std::size_t column = 0; column < cells.size(); ++column) {
        Listbox1.SetCell(Listbox1.LastIndex(), static_cast<int>(column), cells[column]);
    }
}

// Keeps what another program has written into the file in the meantime.
void WindowFavoriteKiwis::SaveEntries() {
    std::vector<FavoriteCells> rows;
    rows.reserve(static_cast<std::size_t>(Listbox1.ListCount()));
    for (int row = 0; row < Listbox1.ListCount(); ++row) {
        rows.push_back(CellsOf(row));
    }
    const bool makesFirstFile = rows.empty() && !File().Exists();
    if (isUnread || (rows == loaded && !makesFirstFile)) {
        return;
    }
    const auto now = ReadFavorites(File());
    const auto save = [&] {
        const auto wanted = now->AsWritten(WithNewRows(rows, loaded, now->Rows()));
        return ReplaceFile(desktop, File(), EncodeFavorites(wanted, now->others));
    };
    if (!now || !save()) {
        app.TellLoss("The favorites could not be saved in " + File().Path().string() +
                     ". What was there before is still there.");
    }
}

bool WindowFavoriteKiwis::Listbox1_ConstructContextualMenu(std::vector<MenuItem>& items) const {
    items.push_back(ItemFor("Add entry", Add));
    if (Listbox1.ListIndex() > -1) {
        items.push_back(ItemFor("Delete entry", Delete));
        items.back().tag = Listbox1.ListIndex();
    }
    return true;
}

bool WindowFavoriteKiwis::Listbox1_ContextualMenuAction(const MenuItem& item) {
    CommitEdits(); // an open edit would be lost with its row
    switch (item.index) {
    case Add:
        AddRow({"Kiwi URL", "8073", "Kiwi Name"});
        break;
    case Delete:
        Listbox1.DeleteRow(item.tag.value_or(-1));
        break;
    default:
        break;
    }
    return true;
}

} // namespace larkspool
