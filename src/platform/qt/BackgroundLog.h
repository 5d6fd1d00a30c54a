#pragma once

#include "platform/LogFile.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspool {

// Implements Desktop::MakeLogFile: a thread of its own writes, and uses only the file and a short
// queue of lines. Where lines were dropped, the file says how many. Does not use Qt.
class BackgroundLog : public LogFile {
  public:
    // Adds whole lines to the file; false: the write has failed. Called by the thread.
    using Append = std::function<bool(const std::string& lines)>;

    explicit BackgroundLog(Append append);
    ~BackgroundLog() override; // waits a moment for the last lines
    BackgroundLog(const BackgroundLog&) = delete;
    BackgroundLog& operator=(const BackgroundLog&) = delete;

    void Write(std::string line) override; // drops the line if the queue is full

  private:
    struct Queue;

    std::shared_ptr<Queue> queue; // shared with the thread, which a dead disk may block for ever
};

} // namespace larkspool
