#include "shell/NightWatch.h"

#include "schedule/ScheduleTexts.h"

#include <cmath>
#include <utility>

namespace larkspool {

namespace {

constexpr double Standstill = 10; // seconds between two calls of Look

} // namespace

NightWatch::NightWatch(Desktop& theDesktop, std::function<void(const std::string& row)> log)
    : desktop(theDesktop), addRow(std::move(log)), lastLook(theDesktop.UtcNow()) {}

void NightWatch::Look(bool isNeeded) {
    if (isNeeded) {
        NoteStandstill();
    }
    lastLook = desktop.UtcNow();
    if (isNeeded != (stayAwake != nullptr)) {
        KeepAwake(isNeeded);
    }
}

void NightWatch::KeepAwake(bool needed) {
    if (!needed) {
        stayAwake.reset();
        if (std::exchange(isGranted, false)) {
            addRow("The computer may go to sleep again");
        }
        return;
    }
    stayAwake = desktop.KeepAwake(
        "Schedules are enabled or a recording runs", [this](const std::string& refusal) {
            isGranted = refusal.empty();
            addRow(isGranted ? "The computer is kept awake"
                             : "The computer refuses to be kept awake: " + refusal);
        });
}

// The computer slept, was too busy, or its clock was set: entries may have been missed.
void NightWatch::NoteStandstill() {
    if (std::abs(desktop.UtcNow() - lastLook) > Standstill) {
        addRow("Nothing ran since " + DateAndTimeText(Date::FromUnixSeconds(lastLook)) +
               ": the computer was asleep or too busy, or its clock was set");
    }
}

} // namespace larkspool
