#pragma once

#include <string>

namespace larkspool {

// A text file to which the program adds lines without waiting: a slow or full disk loses lines.
class LogFile {
  public:
    virtual ~LogFile() = default;

    virtual void Write(std::string line) = 0; // without its line end
};

} // namespace larkspool
