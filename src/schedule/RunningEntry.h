#pragma once

#include <string>
#include <string_view>

namespace larkspool {

struct TimeSpan;

// The time to compare with a row's window: exact, but in whole seconds if the window is a single
// instant, so that this window lasts one second. Seconds since 1904-01-01 UTC.
double ClockFor(const TimeSpan& span, double currentSeconds);

// What a schedule window remembers of the running entry, so that it sees the entry's end once, at
// the first tick after it. Two ticks may be far apart: the program may stall, the computer may
// sleep, the clock may be set forward.
class RunningEntry {
  public:
    // The row with this Time cell has started.
    void Begin(double currentSeconds, std::string_view timeCell);

    // The result of the comparison with the clock for the running row: 1 exactly when its end has
    // passed. An end before the entry's own start does not count, unless the cell was edited since
    // or the clock was set back.
    int Compare(double currentSeconds, std::string_view timeCell, int gmOffset);

  private:
    std::string time;    // the Time cell at the last tick
    double lastTick = 0; // seconds since 1904-01-01 UTC
};

} // namespace larkspool
