#include "schedule/ClockComparison.h"

#include <gtest/gtest.h>

#include <ctime>
#include <initializer_list>
#include <string>

namespace larkspool {
namespace {

// Seconds since 1904-01-01 of a moment like "2027-03-01 06:29:59".
double Clock(const char* moment) {
    constexpr std::time_t epoch1904 = (66LL * 365 + 17) * 86400; // before 1970-01-01
    std::tm fields{};
    EXPECT_NE(strptime(moment, "%Y-%m-%d %H:%M:%S", &fields), nullptr) << moment;
    return static_cast<double>(timegm(&fields) + epoch1904);
}

struct Case {
    const char* clock;
    const char* date;
    const char* time;
    bool forEnding;
    int expected;
};

void Check(std::initializer_list<Case> cases) {
    for (const auto& [clock, date, time, forEnding, expected] : cases) {
        const auto span = SplitTimeCell(time);
        EXPECT_EQ(DateTimeCompare(Clock(clock), date, span->start, span->end, forEnding), expected)
            << clock << " '" << date << "' " << time << (forEnding ? " for its end" : "");
    }
}

TEST(ClockComparison, AnEntryStartsAndEndsOnTheSecond) {
    Check({
        {"2027-03-01 06:29:59", "", "06:30:00-07:00:00", false, -1},
        {"2027-03-01 06:30:00", "", "06:30:00-07:00:00", false, 0},
        {"2027-03-01 07:00:00", "", "06:30:00-07:00:00", false, 0},
        {"2027-03-01 07:00:01", "", "06:30:00-07:00:00", false, 1},
        {"2027-03-01 07:00:00", "", "06:30:00-07:00:00", true, 0},
        {"2027-03-01 07:00:01", "", "06:30:00-07:00:00", true, 1},
        {"2027-03-01 12:00:00", "", "12:00:00-12:00:00", false, 0},
        {"2027-03-01 12:00:01", "", "12:00:00-12:00:00", true, 1},
        {"2027-03-01 06:35:00", "", "6:30:0-7:0:0", false, 0},
        {"2027-03-01 06:35:00", "", "06:30-07:00:00", false, -1},
        {"2027-03-01 06:35:00", "", "06:30:00-07:00:60", false, -1},
        {"2027-03-01 06:35:00", "", "06:30:00 - 07:00:00", false, 0},
    });
}

TEST(ClockComparison, AWindowOverMidnightIsLastNightsUntilALittleAfterItsEnd) {
    Check({
        {"2027-03-01 23:30:00", "", "23:00:00-01:00:00", false, 0},
        {"2027-03-01 00:30:00", "", "23:00:00-01:00:00", false, -1}, // missed
        {"2027-03-01 23:30:00", "", "23:00:00-01:00:00", true, 0},
        {"2027-03-01 01:00:00", "", "23:00:00-01:00:00", true, 0},
        {"2027-03-01 01:00:01", "", "23:00:00-01:00:00", true, 1},
        {"2027-03-01 01:00:09", "", "23:00:00-01:00:00", true, 1},
        {"2027-03-01 01:00:10", "", "23:00:00-01:00:00", true, -1}, // the next night's
        {"2027-03-01 00:00:00", "", "23:59:59-00:00:00", true, 0},
        {"2027-03-01 22:15:30", "", "22:15:30-22:15:29", false, 0},
        {"2027-03-01 22:15:29", "", "22:15:30-22:15:29", true, 0},
    });
}

TEST(ClockComparison, DatesAndDayCodesChooseTheDay) {
    Check({
        {"2027-02-28 06:30:00", "2027-03-01", "06:30:00-07:00:00", false, -1},
        {"2027-03-01 06:30:00", "2027-03-01", "06:30:00-07:00:00", false, 0},
        {"2027-03-02 06:30:00", "2027-03-01", "06:30:00-07:00:00", false, 1},
        {"2027-03-01 00:30:00", "2027-02-28", "23:00:00-01:00:00", true, 1},
        {"2028-03-01 00:30:00", "2028-02-29", "23:00:00-01:00:00", false, 0},
        {"2028-01-01 00:30:00", "2027-12-31", "23:00:00-01:00:00", false, 0},
        {"2027-03-01 06:30:00", "2027-02-29", "06:30:00-07:00:00", false, -1},
        {"2027-03-01 06:30:00", "MWF", "06:30:00-07:00:00", false, 0},
        {"2027-03-02 06:30:00", "MWF", "06:30:00-07:00:00", false, -1},
    });
}

TEST(ClockComparison, DayCodesAreSoughtAnywhereInTheText) {
    const char* const codes[] = {"Su", "M", "Tu", "W", "Th", "F", "Sa"};
    const double sundayNoon = Clock("2027-02-28 12:00:00");
    for (int day = 0; day < 7; ++day) {
        const double noon = sundayNoon + day * 86400;
        for (int code = 0; code < 7; ++code) {
            const std::string text = "x, " + std::string(codes[code]) + "day";
            EXPECT_EQ(DayIsToday(noon, text, 0), day == code) << text << " on day " << day;
            EXPECT_EQ(DayIsToday(noon, text, 12), (day + 1) % 7 == code) << text << " further east";
        }
        for (const char* text : {"su", "m", "", "2027-03-01", "T", "S"}) {
            EXPECT_FALSE(DayIsToday(noon, text, 0)) << text << " on day " << day;
        }
    }
}

} // namespace
} // namespace larkspool
