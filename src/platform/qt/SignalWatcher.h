#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace larkspool {

// Turns SIGINT, SIGTERM and SIGHUP into an event on the loop. One per process; owned by the
// desktop.
class SignalWatcher {
  public:
    explicit SignalWatcher(std::function<void()> signalled);
    ~SignalWatcher();
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;

  private:
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace larkspool
