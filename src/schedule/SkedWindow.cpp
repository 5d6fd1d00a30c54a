#include "schedule/SkedWindow.h"

#include "platform/Desktop.h"

#include <array>

namespace larkspool {

namespace {

constexpr int DesignWidth = 900;
constexpr int DesignHeight = 400;
constexpr int TickPeriod = 250; // ms

} // namespace

SkedWindow::SkedWindow(Desktop& theDesktop, App& application)
    : Window(theDesktop), app(application), Timer1(theDesktop.MakeTimer()) {
    SetTitle("Schedules");
    SetDesignSize(DesignWidth, DesignHeight);
    ListboxSkeds_Open();
    AddControl(ListboxSkeds);
    AddMenuHandlers();
    Timer1->action = [this] { Timer1_Action(); };
    Timer1->SetPeriod(TickPeriod);
    Timer1->SetMode(Timer::Mode::Multiple);
}

void SkedWindow::ListboxSkeds_Open() {
    ListboxSkeds.Place("ListboxSkeds", {0, 0, DesignWidth, DesignHeight},
                       {.left = true, .top = true, .right = true, .bottom = true});
    ListboxSkeds.spokenName = "Schedule";
    ListboxSkeds.hasHeader = true;
    ListboxSkeds.placeholder = "The right mouse button adds an entry, from the console or from a "
                               "clipboard's line, and enables the schedules.";
    const auto columns = std::to_array<Listbox::Column>({
        {.heading = "URL", .width = 0, .weight = 1, .editable = true},
        {.heading = "Date", .width = 80, .weight = 0, .editable = true},
        {.heading = "Time", .width = 140, .weight = 0, .editable = true},
        {.heading = "Freq", .width = 60, .weight = 0, .editable = true},
        {.heading = "Mode", .width = 60, .weight = 0, .editable = true},
        {.heading = "IF Filter", .width = 120, .weight = 0, .editable = true},
        {.heading = "Test", .width = 0, .weight = 0, .editable = false},
    });
    static_assert(columns.size() == ScheduleColumns);
    ListboxSkeds.columns.assign(columns.begin(), columns.end());
    ListboxSkeds.constructContextualMenu = [this](std::vector<MenuItem>& items) {
        return ListboxSkeds_ConstructContextualMenu(items);
    };
    ListboxSkeds.contextualMenuAction = [this](const MenuItem& item) {
        return ListboxSkeds_ContextualMenuAction(item);
    };
}

void SkedWindow::AddMenuHandlers() {
    menuHandlers.Add("FileSaveSchedule", [this] { return FileSaveSchedule_Action(); });
    menuHandlers.Add("FileClose", [this] { return FileClose_Action(); });
}

bool SkedWindow::Event_CancelClose([[maybe_unused]] bool appQuitting) {
    // A program that quits may still wait for an answer: no entry may start in that time.
    Timer1->SetMode(Timer::Mode::Off);
    SetEnabled(false);
    return false;
}

} // namespace larkspool
