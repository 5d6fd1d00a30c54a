#pragma once

#include <functional>

namespace larkspool {

// Raises its action on the event loop every period. Stops when it is destroyed.
class Timer {
  public:
    enum class Mode { Off = 0, Single = 1, Multiple = 2 };

    virtual ~Timer() = default;

    virtual void SetPeriod(int milliseconds) = 0;
    virtual void SetMode(Mode mode) = 0; // any mode but Off starts a whole new period
    virtual Mode RunMode() const = 0;

    std::function<void()> action;
};

} // namespace larkspool
