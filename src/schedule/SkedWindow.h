#pragma once

#include "platform/Date.h"
#include "platform/FolderItem.h"
#include "platform/Listbox.h"
#include "platform/Timer.h"
#include "platform/Window.h"
#include "schedule/RunningEntry.h"
#include "schedule/ScheduleFile.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace larkspool {

class App;

// A schedule: a list of timed receptions that the console carries out without the user. Any number
// of these windows may be open, each with its own list, clock and running entry. They are
// independent: the window that calls the console last controls it. Owned by App until it is closed.
class SkedWindow : public Window {
  public:
    SkedWindow(Desktop& theDesktop, App& application);

    // Adds the rows of a schedule file to the list.
    void OpenFile(const FolderItem& f);

    // true: entries start and end from the next tick on; false: they no longer do.
    void SetEnabled(bool wanted);

    // Always closes, without a question. A running entry continues on the console.
    bool Event_CancelClose(bool appQuitting) override;

    // The only copy of the entries: code that needs an entry reads its cells.
    using enum ScheduleColumn;
    Listbox ListboxSkeds;

    bool schedulesEnabled = false;
    int state = 0;          // 0: no entry runs, 1: an entry runs
    int recordingIndex = 0; // the row that runs, in state 1
    int gmOffset = 0;       // hours east of UTC, for the day of the week

  private:
    void ListboxSkeds_Open();
    void AddMenuHandlers();

    // The clock
    void Timer1_Action();
    void CheckForNewSked();
    void CheckForSkedEnding();
    void TellOfBadRows();
    int CompareForStart(int row) const;
    void StartEntry(int row);
    void EndEntry(const std::string& which);
    double CurrentSeconds() const;
    void SetTestCell(int row, int result);
    ScheduleRow CellsOf(int row) const; // a copy, because a handler may change the list
    void AddRow(const ScheduleRow& cells);

    // What the user does
    bool FileSaveSchedule_Action();
    bool FileClose_Action();
    void TellUnreadable(const FolderItem& file);
    void SaveTo(const FolderItem& file);
    bool ListboxSkeds_ConstructContextualMenu(std::vector<MenuItem>& items) const;
    bool ListboxSkeds_ContextualMenuAction(const MenuItem& item);
    void AddEntry();
    void AddEntryFromClipboard();
    void AddRowForConsole(std::string time, std::string freq, std::string mode);

    App& app;
    RunningEntry running; // in state 1
    std::unique_ptr<Timer> Timer1;
};

} // namespace larkspool
