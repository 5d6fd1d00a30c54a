#pragma once

#include "platform/Desktop.h"

#include <memory>
#include <string>

namespace larkspool {

// The rows of the log, with their times, in a file that outlives the program: in the morning it
// tells what became of the night's schedules. At most 1 MiB and one older file. Owned by the
// application.
class NightLog {
  public:
    explicit NightLog(Desktop& theDesktop) : desktop(theDesktop) {}

    void Add(const std::string& row);

  private:
    Desktop& desktop;
    std::unique_ptr<LogFile> file; // made for the first row
};

} // namespace larkspool
