#pragma once

namespace larkspool {

// Ends the process if its last part takes too long. Nothing can call a lookup of a name back, and
// Qt waits for the resolver when it ends, which may take half a minute on a broken network.
class EndingLimit {
  public:
    ~EndingLimit(); // the end was in time

    // All files are closed by now, and nothing that follows matters. code: the process's own.
    void Start(int code);

  private:
    bool isRunning = false;
};

} // namespace larkspool
