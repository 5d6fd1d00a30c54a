#pragma once

#include <string>
#include <string_view>

namespace larkspool {

struct TimeSpan;

// The clock by which a row's window is judged: the exact one, but whole seconds for a window of a
// single instant, which is a second wide. Seconds since 1904-01-01 UTC.
double ClockFor(const TimeSpan& span, double currentSeconds);

// What a schedule window remembers of the entry that runs, so that its end is seen once and at the
// first tick behind it, however far apart two ticks are: a stalled program, a night of sleep and a
// clock put forward cost the seconds that they take, and no more.
class RunningEntry {
  public:
    // The row with this Time cell has started.
    void Begin(double currentSeconds, std::string_view timeCell);

    // What the comparison with the clock gives for the end of this row, 1 exactly once its end has
    // come. Nothing that the clock passed before the entry's own start counts, except in a cell
    // that was edited meanwhile, and after the clock was put back.
    int Compare(double currentSeconds, std::string_view timeCell, int gmOffset);

  private:
    std::string time;    // the Time cell at the last tick
    double lastTick = 0; // when the row was last seen to run
};

} // namespace larkspool
