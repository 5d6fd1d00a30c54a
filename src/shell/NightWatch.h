#pragma once

#include "platform/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspool {

// Looks after a program that works while no user is there: keeps the computer awake, and notes in
// the log when the program could not run. Owned by the application.
class NightWatch {
  public:
    NightWatch(Desktop& theDesktop, std::function<void(const std::string& row)> log);

    // To be called several times a second.
    void Look(bool schedulesEnabled, bool isRecording);

  private:
    void KeepAwake(bool needed);
    void NoteStandstill();

    Desktop& desktop;
    std::function<void(const std::string&)> addRow;
    std::unique_ptr<StayAwake> stayAwake; // while the computer is to stay awake
    bool isGranted = false;
    double lastLook = 0; // seconds since 1970
};

} // namespace larkspool
