#include "directory/WindowFavoriteKiwis.h"

#include "platform/ReplaceFile.h"
#include "shell/App.h"

namespace larkspool {

namespace {

constexpr Rect DesignBounds = {0, 0, 600, 400};
constexpr int AddEntry = 1;
constexpr int DeleteEntry = 2;

enum Column { Host, Port, Name };

} // namespace

WindowFavoriteKiwis::WindowFavoriteKiwis(Desktop& host, App& application)
    : Window(host), app(application) {
    SetTitle("Favorite Kiwis");
    SetDesignSize(DesignBounds.width, DesignBounds.height);
    Listbox1.Place("Listbox1", DesignBounds, {true, true, true, true});
    Listbox1.spokenName = "Favorites";
    Listbox1.hasHeader = true;
    Listbox1.placeholder = "The right mouse button adds a favorite.";
    Listbox1.constructContextualMenu = [this](std::vector<MenuItem>& items) {
        return Listbox1_ConstructContextualMenu(items);
    };
    Listbox1.contextualMenuAction = [this](const MenuItem& item) {
        return Listbox1_ContextualMenuAction(item);
    };
    AddControl(Listbox1);
}

void WindowFavoriteKiwis::Event_Open() {
    Listbox1.columns = {{"URL", 0, 2, true}, {"Port", 60, 0, true}, {"Name", 0, 3, true}};
    LoadEntries();
}

bool WindowFavoriteKiwis::Event_CancelClose(bool appQuitting) {
    CommitEdits();
    if (!appQuitting && app.EndsWith(*this)) {
        return false; // the quit that follows asks again
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
    for (const auto& [host, port, name] : loaded) {
        AddRow(host, port, name);
    }
}

void WindowFavoriteKiwis::AddRow(const std::string& host, const std::string& port,
                                 const std::string& name) {
    Listbox1.AddRow(host);
    Listbox1.SetCell(Listbox1.LastIndex(), Port, port);
    Listbox1.SetCell(Listbox1.LastIndex(), Name, name);
}

std::vector<FavoriteCells> WindowFavoriteKiwis::Rows() const {
    std::vector<FavoriteCells> rows;
    rows.reserve(static_cast<std::size_t>(Listbox1.ListCount()));
    for (int row = 0; row < Listbox1.ListCount(); ++row) {
        rows.push_back(
            {Listbox1.Cell(row, Host), Listbox1.Cell(row, Port), Listbox1.Cell(row, Name)});
    }
    return rows;
}

// Another program may have written the file meanwhile: what it has put there stays.
void WindowFavoriteKiwis::SaveEntries() {
    const auto rows = Rows();
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
    items.push_back({.name = "", .caption = "Add entry", .shortcut = "", .index = AddEntry});
    if (Listbox1.ListIndex() > -1) {
        items.push_back({.name = "",
                         .caption = "Delete entry",
                         .shortcut = "",
                         .index = DeleteEntry,
                         .tag = Listbox1.ListIndex()});
    }
    return true;
}

bool WindowFavoriteKiwis::Listbox1_ContextualMenuAction(const MenuItem& item) {
    CommitEdits(); // an edit that is open would be lost with its row
    if (item.index == AddEntry) {
        AddRow("Kiwi URL", "8073", "Kiwi Name");
    } else if (item.index == DeleteEntry && item.tag) {
        Listbox1.DeleteRow(*item.tag);
    }
    return true;
}

} // namespace larkspool
