#pragma once

#include "platform/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspool {

// Helps a program that works while no user is there: keeps the computer awake, and adds a row to
// the log when the program could not run. Owned by the application.
class NightWatch {
  public:
    NightWatch(Desktop& theDesktop, std::function<void(const std::string& row)> log);

    // Call several times per second. isNeeded: a schedule is enabled or a recording runs.
    void Look(bool isNeeded);

  private:
    void KeepAwake(bool needed);
    void NoteStandstill();

    Desktop& desktop;
    std::function<void(const std::string&)> addRow;
    std::unique_ptr<StayAwake> stayAwake; // while the computer must stay awake
    bool isGranted = false;
    double lastLook = 0; // seconds since 1970
};

} // namespace larkspool
