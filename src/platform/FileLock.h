#pragma once

namespace larkspool {

// Keeps other programs, and other parts of this one, from taking a file for nobody's. Advisory: it
// binds those who ask. Held while the object lives, and given back by the system if the program
// dies.
class FileLock {
  public:
    virtual ~FileLock() = default;
};

} // namespace larkspool
