#pragma once

namespace larkspool {

// Ends the process if its shutdown takes too long. A lookup of a name cannot be canceled, and Qt
// waits for the resolver when it ends, which may take half a minute on a broken network.
class EndingLimit {
  public:
    ~EndingLimit(); // the shutdown was in time

    // To be called when all files are closed. code: the process's exit code.
    void Start(int code);

  private:
    bool isRunning = false;
};

} // namespace larkspool
