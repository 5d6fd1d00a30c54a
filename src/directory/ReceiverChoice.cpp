// How the user chooses a receiver: the popup, and the two fields that a pick fills.
#include "console/Window1.h"
#include "directory/FavoritesFile.h"
#include "directory/KiwiListClass.h"
#include "directory/PastedUrl.h"
#include "platform/Text.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

namespace {

// The receivers of the site that this build knows, one port per antenna. Empty without a site.
ReceiverList SiteReceivers(const Deployment& deployment) {
    constexpr std::int64_t FirstPort = 8073;
    ReceiverList list;
    if (deployment.siteHost.empty()) {
        return list;
    }
    std::int64_t port = FirstPort;
    for (const std::string& name : deployment.siteNames) {
        list.Append(name, deployment.siteHost, port);
        ++port;
    }
    return list;
}

} // namespace

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

// A file beside the program is preferred here; the editor ignores it.
void Window1::AddFavoriteKiwis() {
    const FolderItem file =
        desktop.BesideProgramOrIn(SpecialFolder::ApplicationData, FavoritesFileName);
    if (auto favorites = ReadFavorites(file)) {
        favorites->receivers.Reverse(); // the latest entry first
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
    // While a list is being fetched, the rows are still those of the previous list.
    const int row = PopupMenuKiwiList.ListIndex();
    const auto index = static_cast<std::size_t>(row);
    if (row < 0 || app.theKiwiList == nullptr || index >= app.theKiwiList->Count()) {
        return;
    }
    TextFieldAddress.SetText(app.theKiwiList->urls[index]);
    TextFieldPort.SetText(Str(app.theKiwiList->ports[index]));
}

void Window1::TextFieldAddress_TextChange() {
    if (const auto pasted = ParsePastedUrl(TextFieldAddress.Text())) {
        TextFieldAddress.SetText(pasted->host); // raises this event again
        TextFieldPort.SetText(pasted->port);
    }
    app.prefs.prefsLastURL = TextFieldAddress.Text();
}

void Window1::TextFieldPort_TextChange() {
    app.prefs.prefsLastPort = WholePart<std::int32_t>(Val(TextFieldPort.Text()));
}

} // namespace larkspool
