#pragma once

#include <string>

namespace larkspool {

// A text file that the program adds lines to and never waits for: a slow or full disk costs lines.
class LogFile {
  public:
    virtual ~LogFile() = default;

    virtual void Write(std::string line) = 0; // without its line end
};

} // namespace larkspool
