#include "schedule/RunningEntry.h"

#include "schedule/ClockComparison.h"

#include <cmath>
#include <utility>

namespace larkspool {

namespace {

// Whether a daily end is between two moments: at or after the earlier one, before the later one.
bool EndIsBetween(double endOfDay, double earlier, double later) {
    double end = DayBegin(later) + endOfDay;
    if (end >= later) {
        end -= DayLength;
    }
    return end >= earlier;
}

} // namespace

double ClockFor(const TimeSpan& span, double currentSeconds) {
    const auto start = SecondOfDay(span.start);
    return start && start == SecondOfDay(span.end) ? std::floor(currentSeconds) : currentSeconds;
}

// The end of a window of a single instant is at the beginning of this second: hence floor.
void RunningEntry::Begin(double currentSeconds, std::string_view timeCell) {
    time = timeCell;
    lastTick = std::floor(currentSeconds);
}

int RunningEntry::Compare(double currentSeconds, std::string_view timeCell, int gmOffset) {
    const auto span = SplitTimeCell(timeCell);
    const auto endOfDay = span ? SecondOfDay(span->end) : std::nullopt;
    if (!endOfDay) {
        return -1;
    }
    const double now = ClockFor(*span, currentSeconds);
    const double before = std::exchange(lastTick, currentSeconds);
    const bool isEdited = std::exchange(time, timeCell) != timeCell;
    if (EndIsBetween(*endOfDay, ClockFor(*span, before), now)) {
        return 1;
    }
    // Without the date: an entry that began on its day last night ends today.
    const int result = DateTimeCompare(now, "", span->start, span->end, true, gmOffset);
    const bool mayHaveEndedBefore = isEdited || currentSeconds < before;
    return result == 1 && !mayHaveEndedBefore ? 0 : result;
}

} // namespace larkspool
