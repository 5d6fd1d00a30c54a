#pragma once

#include "platform/Desktop.h"

#include <filesystem>
#include <memory>

namespace larkspool {

// Completes the headers of recordings that a crash or a power failure has left without their sizes,
// so that every player plays them. Starts some seconds after the program and looks at a few files
// at a time. Owned by the application.
class RecordingRepair {
  public:
    explicit RecordingRepair(Desktop& theDesktop);

    void Start();

  private:
    void Step();
    void LookAt(const std::filesystem::directory_entry& entry);

    Desktop& desktop;
    std::unique_ptr<Timer> timer;
    std::filesystem::directory_iterator next; // at its end while no folder is being read
    bool hasBegun = false;
};

} // namespace larkspool
