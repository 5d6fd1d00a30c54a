#include "schedule/RunningEntry.h"

#include "schedule/ClockComparison.h"
#include "schedule/ScheduleTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace larkspool {
namespace {

constexpr double Monday = 3886790400; // 2027-03-01 00:00:00
constexpr double Tick = 0.25;
const std::vector<double> Gaps = {0.25,  1,     9.75,  10,    10.25,  11,    60,     3600,  43200,
                                  86390, 86399, 86400, 86401, 172800, 86410, 259199, 259200};

std::string Clock(std::int64_t second) {
    return TimeOfDayText(Date::FromUnixSeconds(static_cast<double>(second)));
}

// One row, ended at every end that the clock can reach: counts what goes wrong.
class Ends {
  public:
    Ends(std::int64_t endSecond, std::int64_t length)
        : cell(Clock(endSecond - length + 86400) + "-" + Clock(endSecond)),
          begin(Monday + static_cast<double>((endSecond - length + 86400) % 86400)),
          end(begin + static_cast<double>(length)) {}

    void Try(double phase) {
        const double first = begin + phase;
        Expect(Starts(first), true);
        const double last = phase > 0 ? end - Tick + phase : end; // that isn't behind the end
        for (const double gap : Gaps) {
            Expect(Ended(first, first, first + gap), first + gap > end);
            Expect(Ended(first, last, last + gap), last + gap > end);
        }
        for (double after = last + Tick; after < end + 1; after += Tick) {
            Expect(Starts(after), false);
        }
    }

    std::int64_t tried = 0;
    std::int64_t wrong = 0;

  private:
    bool Starts(double now) const {
        const auto span = SplitTimeCell(cell);
        return DateTimeCompare(ClockFor(*span, now), "", span->start, span->end, false) == 0;
    }
    // The row starts, is seen to run a tick and at another moment, and after that at a third.
    bool Ended(double start, double seen, double now) {
        RunningEntry entry;
        entry.Begin(start, cell);
        if (seen > start) {
            Expect(entry.Compare(std::min(start + Tick, seen), cell, 0) == 1, false);
            Expect(entry.Compare(seen, cell, 0) == 1, false);
        }
        return entry.Compare(now, cell, 0) == 1;
    }
    void Expect(bool is, bool wanted) {
        ++tried;
        wrong += is != wanted;
    }

    std::string cell;
    double begin;
    double end;
};

// With LARKSPOOL_ALL_ENDS set, of all seconds of the day and a hundredth of a second apart.
TEST(RunningEntry, EveryEndIsSeenAtTheFirstTickBehindItAndNoneEarlyOrTwice) {
    const bool all = std::getenv("LARKSPOOL_ALL_ENDS") != nullptr;
    std::int64_t tried = 0;
    for (std::int64_t end = 86399; end >= 0; end -= all ? 1 : 719) {
        for (const std::int64_t length : {10, 300, 7200, 86399}) {
            Ends ends(end, length);
            for (int hundredths = 0; hundredths < 25; hundredths += all ? 1 : 8) {
                ends.Try(hundredths / 100.0);
            }
            ASSERT_EQ(ends.wrong, 0) << Clock(end) << ", " << length << " s long";
            tried += ends.tried;
        }
    }
    std::printf("%lld comparisons\n", static_cast<long long>(tried));
}

TEST(RunningEntry, AWindowOfASingleInstantIsASecondWide) {
    for (const char* cell : {"12:00:00-12:00:00", "23:59:59-23:59:59", "0:0:0-00:00:00"}) {
        const auto span = SplitTimeCell(cell);
        const double instant = Monday + *SecondOfDay(span->start);
        for (const double phase : {0.0, 0.01, 0.24}) {
            RunningEntry entry;
            EXPECT_EQ(ClockFor(*span, instant + phase), instant);
            entry.Begin(instant + phase, cell);
            for (double now = instant + phase + Tick; now < instant + 1; now += Tick) {
                EXPECT_NE(entry.Compare(now, cell, 0), 1) << cell << " " << now - instant;
            }
            EXPECT_EQ(entry.Compare(instant + phase + 1, cell, 0), 1) << cell;
        }
    }
}

TEST(RunningEntry, AnEditAndAClockPutBackAreJudgedByTheTimeOfDay) {
    const std::string evening = "22:00:00-22:30:00";
    const std::string night = "22:00:00-01:00:00";
    const struct {
        const char* why;
        std::string started;
        double secondsLater;
        std::string cell;
        int expected;
    } cases[] = {
        {"as it started", evening, 60, evening, 0},
        {"an end before the entry's own start", evening, 60, "21:00:00-21:30:00", 1},
        {"a later end", evening, 3600, "22:00:00-23:30:00", 0},
        {"an end that can't be read", evening, 3600, "22:00:00-never", -1},
        {"put back to where the window lies ahead", evening, -3600, evening, -1},
        {"put back to late in the evening before", evening, -84000, evening, 1},
        {"put back within a night", night, -3600, night, -1},
    };
    const double start = Monday + 22 * 3600;
    for (const auto& c : cases) {
        RunningEntry entry;
        entry.Begin(start, c.started);
        EXPECT_EQ(entry.Compare(start + c.secondsLater, c.cell, 0), c.expected) << c.why;
    }
}

} // namespace
} // namespace larkspool
