#include "platform/Text.h"
#include "schedule/ClockComparison.h"
#include "schedule/ScheduleTexts.h"
#include "schedule/SkedWindow.h"
#include "shell/App.h"

#include <algorithm>

namespace larkspool {

// Four times per second. Nothing is planned ahead, so that a change in the cells takes effect at
// the next tick.
void SkedWindow::Timer1_Action() {
    if (schedulesEnabled) {
        if (state == 0) {
            CheckForNewSked();
        } else if (state == 1) {
            CheckForSkedEnding();
        } else {
            state = 0;
        }
    }
    SetTitle(SkedTitle(app.GetCurrentUtcDate(), schedulesEnabled, state));
}

void SkedWindow::SetEnabled(bool wanted) {
    if (schedulesEnabled == wanted) {
        return;
    }
    schedulesEnabled = wanted;
    app.Console().Log(std::string("Schedules ") + (wanted ? "enabled" : "disabled") +
                      ", entries: " + Str(ListboxSkeds.ListCount()));
    if (wanted) {
        TellOfBadRows();
    }
}

// Without this row a wrong time such as 24:00:00 would lose the recording silently.
void SkedWindow::TellOfBadRows() {
    constexpr int MostRows = 50;
    for (int row = 0; row < std::min(ListboxSkeds.ListCount(), MostRows); ++row) {
        const ScheduleRow cells = CellsOf(row);
        if (!CanEverStart(cells[DateColumn], cells[TimeColumn])) {
            app.Console().Log("Entry will not start, its date or time can't be read: " +
                              EntryText(cells));
        }
    }
}

// Starts the topmost row whose window contains this moment.
void SkedWindow::CheckForNewSked() {
    for (int row = 0; row < ListboxSkeds.ListCount(); ++row) {
        if (!SplitTimeCell(ListboxSkeds.Cell(row, TimeColumn))) {
            continue;
        }
        const int result = CompareForStart(row);
        SetTestCell(row, result);
        if (result == 0) {
            StartEntry(row);
            return;
        }
    }
}

int SkedWindow::CompareForStart(int row) const {
    const auto span = SplitTimeCell(ListboxSkeds.Cell(row, TimeColumn));
    return span ? DateTimeCompare(ClockFor(*span, CurrentSeconds()),
                                  ListboxSkeds.Cell(row, DateColumn), span->start, span->end, false,
                                  gmOffset)
                : -1;
}

void SkedWindow::StartEntry(int row) {
    const ScheduleRow cells = CellsOf(row);
    app.Console().Log("Entry started: " + EntryText(cells));
    recordingIndex = row;
    state = 1;
    running.Begin(CurrentSeconds(), cells[TimeColumn]);
    app.Console().ConnectAndRecord(cells[UrlColumn], cells[FreqColumn], cells[ModeColumn],
                                   cells[FilterColumn]);
}

// Ends the running entry when its end has passed or its row was deleted.
void SkedWindow::CheckForSkedEnding() {
    if (recordingIndex >= ListboxSkeds.ListCount()) {
        EndEntry("its row was deleted");
        return;
    }
    const std::string time = ListboxSkeds.Cell(recordingIndex, TimeColumn);
    if (!SplitTimeCell(time)) {
        return;
    }
    const int result = running.Compare(CurrentSeconds(), time, gmOffset);
    SetTestCell(recordingIndex, result);
    if (result == 1) {
        EndEntry(EntryText(CellsOf(recordingIndex)));
    }
}

void SkedWindow::EndEntry(const std::string& which) {
    state = 0;
    app.Console().EndEntry();
    app.Console().Log("Entry ended: " + which);
}

double SkedWindow::CurrentSeconds() const { return app.GetCurrentUtcDate().TotalSeconds(); }

void SkedWindow::SetTestCell(int row, int result) {
    ListboxSkeds.SetCell(row, TestColumn, Str(result));
}

ScheduleRow SkedWindow::CellsOf(int row) const {
    ScheduleRow cells;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        cells[column] = ListboxSkeds.Cell(row, static_cast<int>(column));
    }
    return cells;
}

void SkedWindow::AddRow(const ScheduleRow& cells) {
    ListboxSkeds.AddRow("");
    for (std::size_t column = 0; column < cells.size(); ++column) {
        ListboxSkeds.SetCell(ListboxSkeds.LastIndex(), static_cast<int>(column), cells[column]);
    }
}

} // namespace larkspool
