#include "schedule/RunningEntry.h"

#include "schedule/ClockComparison.h"
#include "schedule/ScheduleTexts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace larkspool {
namespace {

constexpr double Monday = 3886790400; // 2027-03-01 00:00:00
constexpr double Tick = 0.25;

std::string Clock(int second) { return TimeOfDayText(Date::FromUnixSeconds(second)); }

bool Starts(const std::string& cell, double now) {
    const auto span = SplitTimeCell(cell);
    return DateTimeCompare(ClockFor(*span, now), "", span->start, span->end, false) == 0;
}

// The row starts, is seen to run at another moment, and has ended at a third.
bool Ended(const std::string& cell, double start, double seen, double now) {
    RunningEntry entry;
    entry.Begin(start, cell);
    if (seen > start) {
        EXPECT_NE(entry.Compare(seen, cell, 0), 1) << cell;
    }
    return entry.Compare(now, cell, 0) == 1;
}

// With LARKSPOOL_ALL_ENDS set, all seconds of the day and phases a hundredth of a second apart.
bool IsWhole() { return std::getenv("LARKSPOOL_ALL_ENDS") != nullptr; }

void ExpectItsEndAtTheFirstTickBehindIt(const std::string& cell, double begin, double end) {
    for (int hundredths = 0; hundredths < 25; hundredths += IsWhole() ? 1 : 8) {
        const double phase = hundredths / 100.0;
        const double first = begin + phase;
        const double last = end + (phase > 0 ? phase - Tick : 0); // that isn't behind the end
        ASSERT_TRUE(Starts(cell, first)) << cell;
        for (const double gap : {0.25, 1.0, 9.75, 10.0, 10.25, 11.0, 60.0, 3600.0, 43200.0, 86390.0,
                                 86399.0, 86400.0, 86401.0, 86410.0, 172800.0, 259200.0}) {
            for (const double seen : {first, last}) {
                ASSERT_EQ(Ended(cell, first, seen, seen + gap), seen + gap > end) << cell << gap;
            }
        }
        for (int ticks = 1; last + ticks * Tick < end + 1; ++ticks) {
            ASSERT_FALSE(Starts(cell, last + ticks * Tick)) << cell << " twice";
        }
    }
}

TEST(RunningEntry, EveryEndIsSeenAtTheFirstTickBehindItAndNoneEarlyOrTwice) {
    for (int end = 86399; end >= 0; end -= IsWhole() ? 1 : 719) {
        for (const int length : {10, 300, 7200, 86399}) {
            const int begin = (end - length + 86400) % 86400;
            ExpectItsEndAtTheFirstTickBehindIt(Clock(begin) + "-" + Clock(end), Monday + begin,
                                               Monday + begin + length);
        }
    }
}

} // namespace
} // namespace larkspool
