#include "platform/Text.h"
#include "schedule/ClockComparison.h"
#include "schedule/ScheduleTexts.h"
#include "schedule/SkedWindow.h"
#include "shell/App.h"

#include <cmath>

namespace larkspool {

// Four times a second. Nothing is planned ahead and nothing kept from tick to tick, so whatever
// the user changes in the cells holds from the next tick on.
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

// Starts the topmost row whose window is open.
void SkedWindow::CheckForNewSked() {
    for (int row = 0; row < ListboxSkeds.ListCount(); ++row) {
        const auto span = SplitTimeCell(ListboxSkeds.Cell(row, TimeColumn));
        if (!span) {
            continue;
        }
        const int result = DateTimeCompare(CurrentSeconds(), ListboxSkeds.Cell(row, DateColumn),
                                           span->start, span->end, false, gmOffset);
        SetTestCell(row, result);
        if (result == 0) {
            recordingIndex = row;
            app.Console().ConnectAndRecord(
                ListboxSkeds.Cell(row, UrlColumn), ListboxSkeds.Cell(row, FreqColumn),
                ListboxSkeds.Cell(row, ModeColumn), ListboxSkeds.Cell(row, FilterColumn));
            state = 1;
            return;
        }
    }
}

// Hangs up when the running row's window has closed, or the row is gone.
void SkedWindow::CheckForSkedEnding() {
    if (recordingIndex >= ListboxSkeds.ListCount()) {
        app.Console().EndEntry();
        state = 0;
        return;
    }
    const auto span = SplitTimeCell(ListboxSkeds.Cell(recordingIndex, TimeColumn));
    if (!span) {
        return;
    }
    // Without the date: an entry that began last night on its own day ends today.
    const int result =
        DateTimeCompare(CurrentSeconds(), "", span->start, span->end, true, gmOffset);
    SetTestCell(recordingIndex, result);
    if (result == 1) {
        app.Console().EndEntry();
        state = 0;
    }
}

// Whole seconds, so that a window of a single instant is a second wide.
double SkedWindow::CurrentSeconds() const {
    return std::floor(app.GetCurrentUtcDate().TotalSeconds());
}

void SkedWindow::SetTestCell(int row, int result) {
    ListboxSkeds.SetCell(row, TestColumn, Str(result));
}

} // namespace larkspool
