#pragma once

namespace larkspool {

// Tells other programs, and other parts of this one, that a file is in use. Advisory: it binds only
// those who ask for the lock. Held while the object lives; the system releases it if the program
// dies.
class FileLock {
  public:
    virtual ~FileLock() = default;
};

} // namespace larkspool
