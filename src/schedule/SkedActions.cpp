// What the user does in a schedule window.
#include "directory/PastedUrl.h"
#include "platform/ReplaceFile.h"
#include "schedule/ScheduleFile.h"
#include "schedule/ScheduleTexts.h"
#include "schedule/SkedWindow.h"
#include "shell/App.h"

#include <utility>
#include <variant>

namespace larkspool {

namespace {

enum ContextItem { Add = 1, Delete = 2, AddFromClipboard = 3, Enable = 10, Disable = 11 };

MenuItem ItemFor(std::string caption, ContextItem index) {
    MenuItem item;
    item.caption = std::move(caption);
    item.index = index;
    return item;
}

} // namespace

void SkedWindow::OpenFile(const FolderItem& f) {
    if (!f.Exists()) {
        return;
    }
    auto lines = TextInputStream::Open(f);
    if (!lines) {
        if (f.Exists()) { // otherwise it was deleted just now
            TellUnreadable(f);
        }
        return;
    }
    for (const ScheduleRow& cells : ReadSchedule(*lines)) {
        AddRow(cells);
    }
    if (lines->Failed()) {
        TellUnreadable(f);
    }
}

void SkedWindow::TellUnreadable(const FolderItem& file) {
    desktop.MsgBox("Error opening file");
    app.Console().Log("Schedule can't be read: " + file.Name());
}

bool SkedWindow::FileSaveSchedule_Action() {
    desktop.ShowSaveFileDialog("text/txt", "schedule.txt",
                               [this, alive = LifeToken()](std::optional<FolderItem> chosen) {
                                   if (chosen && !alive.expired()) {
                                       SaveTo(*chosen);
                                   }
                               });
    return true;
}

void SkedWindow::SaveTo(const FolderItem& file) {
    CommitEdits();
    std::vector<ScheduleRow> rows;
    rows.reserve(static_cast<std::size_t>(ListboxSkeds.ListCount()));
    for (int row = 0; row < ListboxSkeds.ListCount(); ++row) {
        rows.push_back(CellsOf(row));
    }
    if (!ReplaceFile(desktop, file, ScheduleText(rows))) {
        desktop.MsgBox("Error saving file");
    }
}

bool SkedWindow::FileClose_Action() {
    Close();
    return true;
}

bool SkedWindow::ListboxSkeds_ConstructContextualMenu(std::vector<MenuItem>& items) const {
    items.push_back(ItemFor("Enable schedules", Enable));
    items.push_back(ItemFor("Disable schedules", Disable));
    items.push_back(ItemFor("Add entry", Add));
    items.push_back(ItemFor("Add entry from clipboard", AddFromClipboard));
    if (ListboxSkeds.ListIndex() > -1) {
        items.push_back(ItemFor("Delete entry", Delete));
        items.back().tag = ListboxSkeds.ListIndex();
    }
    return true;
}

bool SkedWindow::ListboxSkeds_ContextualMenuAction(const MenuItem& item) {
    CommitEdits(); // an open edit would be lost with its row
    switch (item.index) {
    case Enable:
        SetEnabled(true);
        break;
    case Disable:
        SetEnabled(false);
        break;
    case Add:
        AddEntry();
        break;
    case AddFromClipboard:
        AddEntryFromClipboard();
        break;
    case Delete:
        ListboxSkeds.DeleteRow(item.tag.value_or(-1));
        break;
    default:
        break;
    }
    return true;
}

void SkedWindow::AddEntry() {
    const Window1& console = app.Console();
    AddRowForConsole(NewEntryTimeText(app.GetCurrentUtcDate()), console.TextFieldFreq.Text(),
                     console.PopupMenuMode.Text());
}

void SkedWindow::AddEntryFromClipboard() {
    const auto text = desktop.ClipboardText();
    if (!text) {
        desktop.MsgBox("No text in the clipboard");
        return;
    }
    const auto read = ParseStationLine(*text, app.GetCurrentUtcDate());
    if (const auto* message = std::get_if<std::string>(&read)) {
        desktop.MsgBox(*message);
        return;
    }
    const auto& station = std::get<StationLine>(read);
    // A broadcast is received in the narrow mode, unless the console uses the wide one.
    AddRowForConsole(station.time, station.freq,
                     app.Console().PopupMenuMode.Text() == "am" ? "am" : "amn");
}

static_assert(SavedColumns == 6, "AddRowForConsole gives a new row one cell for each of these");

// The row has no date, and the console's receiver and passband.
void SkedWindow::AddRowForConsole(std::string time, std::string freq, std::string mode) {
    const Window1& console = app.Console();
    const PastedUrl receiver =
        TidyReceiver(console.TextFieldAddress.Text(), console.TextFieldPort.Text());
    AddRow({ReceiverCell(receiver), "", std::move(time), std::move(freq), std::move(mode),
            console.TextFieldLowCut.Text() + "," + console.TextFieldHighCut.Text()});
}

} // namespace larkspool
