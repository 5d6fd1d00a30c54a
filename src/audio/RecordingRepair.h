#pragma once

#include "platform/Desktop.h"

#include <filesystem>
#include <memory>

namespace larkspool {

// Finishes the recordings that a crash or a power cut has left without their sizes, so that every
// player takes them. Works quietly, a few files at a time, some seconds after the program's start.
// Owned by the application.
class RecordingRepair {
  public:
    explicit RecordingRepair(Desktop& theDesktop);

    void Start();

  private:
    void Step();
    void LookAt(const std::filesystem::directory_entry& entry);

    Desktop& desktop;
    std::unique_ptr<Timer> timer;
    std::filesystem::directory_iterator next; // at its end while nothing is under way
    bool hasBegun = false;
};

} // namespace larkspool
