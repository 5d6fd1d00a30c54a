#pragma once

#include "platform/Desktop.h"

#include <memory>
#include <string>

namespace larkspool {

// Writes the rows of the log, with their times, into a file, so that the user can see in the
// morning what the schedules of the night have done. At most 1 MiB and one older file. Owned by
// the application.
class NightLog {
  public:
    explicit NightLog(Desktop& theDesktop) : desktop(theDesktop) {}

    void Add(const std::string& row);

  private:
    Desktop& desktop;
    std::unique_ptr<LogFile> file; // created with the first row
};

} // namespace larkspool
