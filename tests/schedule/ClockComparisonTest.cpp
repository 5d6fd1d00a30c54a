#include "schedule/ClockComparison.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace larkspool {
namespace {

// Seconds between 1904-01-01 and 1970-01-01, counted day by day.
constexpr std::time_t Epoch1904 = (66LL * 365 + 17) * 86400;

std::time_t At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day; // rolls over
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    return timegm(&fields);
}

int Compare(std::time_t now, const std::string& date, const std::string& start,
            const std::string& end, bool forEnding) {
    return DateTimeCompare(static_cast<double>(now + Epoch1904), date, start, end, forEnding);
}

// A window as the rules tell it, worked out slowly on the fields of the C library's calendar.
class SlowModel {
  public:
    SlowModel(std::time_t moment, const std::string& date) : now(moment), rowsDay(Fields(moment)) {
        static const std::vector<std::string> Codes = {"Su", "M", "Tu", "W", "Th", "F", "Sa"};
        const std::string today = Codes[static_cast<std::size_t>(rowsDay.tm_wday)];
        if (!date.empty() && date.find(today) == std::string::npos) {
            readable = ReadDay(date);
        }
    }

    int Result(const std::string& start, const std::string& end, bool forEnding) const {
        std::tm from = rowsDay;
        std::tm to = rowsDay;
        if (!readable || !ReadTime(start, from) || !ReadTime(end, to)) {
            return -1;
        }
        if (Seconds(from) > Seconds(to)) {
            const std::tm present = Fields(now);
            const int nowOfDay = present.tm_hour * 3600 + present.tm_min * 60 + present.tm_sec;
            const int endOfDay = to.tm_hour * 3600 + to.tm_min * 60 + to.tm_sec;
            if (forEnding && endOfDay + 10 > nowOfDay) {
                --from.tm_mday;
            } else {
                ++to.tm_mday;
            }
        }
        int result = -1;
        if (now >= Seconds(from) && Seconds(to) >= now) {
            result = 0;
        }
        if (now > Seconds(to)) {
            result = 1;
        }
        return result;
    }

  private:
    static std::tm Fields(std::time_t moment) {
        std::tm fields{};
        gmtime_r(&moment, &fields);
        return fields;
    }
    static std::time_t Seconds(std::tm fields) { return timegm(&fields); }

    bool ReadDay(const std::string& text) {
        int year = 0;
        int month = 0;
        int day = 0;
        if (std::sscanf(text.c_str(), "%d-%d-%d", &year, &month, &day) != 3) {
            return false;
        }
        rowsDay = Fields(At(year, month, day));
        return rowsDay.tm_mon == month - 1 && rowsDay.tm_mday == day;
    }
    static bool ReadTime(const std::string& text, std::tm& fields) {
        return std::sscanf(text.c_str(), "%d:%d:%d", &fields.tm_hour, &fields.tm_min,
                           &fields.tm_sec) == 3 &&
               fields.tm_hour < 24 && fields.tm_min < 60 && fields.tm_sec < 60;
    }

    std::time_t now;
    std::tm rowsDay;
    bool readable = true;
};

struct Window {
    std::string start;
    std::string end;
};

using Windows = std::vector<Window>;
using Dates = std::vector<std::string>;

const Windows RealWindows = {
    {"06:30:00", "07:00:00"}, {"00:00:00", "23:59:59"}, {"12:00:00", "12:00:00"},
    {"23:00:00", "01:00:00"}, {"22:15:30", "22:15:29"}, {"23:59:59", "00:00:00"},
    {"23:59:58", "23:59:55"},
};
const Dates RealDates = {"",           "MWF",        "TuTh",       "SuSa",
                         "2027-03-01", "2027-02-28", "2028-02-29", "2027-12-31"};

const Windows OddWindows = {{"00:00:00", "00:00:00"},
                            {"00:00:01", "00:00:00"},
                            {"24:00:00", "25:00:00"},
                            {"ab", "01:00:00"}};
const Dates OddDates = {"Sun", "su", "2027-02-29", "2027-13-01", "not a date", "2028-03-01"};

void ExpectLikeTheModel(std::time_t now, const Dates& dates, const Windows& windows) {
    for (const std::string& date : dates) {
        const SlowModel model(now, date);
        for (const Window& window : windows) {
            for (const bool forEnding : {false, true}) {
                ASSERT_EQ(Compare(now, date, window.start, window.end, forEnding),
                          model.Result(window.start, window.end, forEnding))
                    << now << " '" << date << "' " << window.start << "-" << window.end
                    << (forEnding ? " for its end" : "");
            }
        }
    }
}

// Over the end of February, with and without a 29th, and over a new year.
TEST(ClockComparison, EveryMinuteOfSeveralDaysIsAsTheRulesSay) {
    for (const auto& [from, to] :
         {std::pair{At(2027, 2, 28), At(2027, 3, 2)}, std::pair{At(2028, 2, 28), At(2028, 3, 2)},
          std::pair{At(2027, 12, 31), At(2028, 1, 2)}}) {
        for (std::time_t now = from; now < to; now += 60) {
            ExpectLikeTheModel(now, RealDates, RealWindows);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(ClockComparison, EverySecondAroundTheEdgesIsAsTheRulesSay) {
    for (const std::time_t edge :
         {At(2027, 2, 28, 6, 30), At(2027, 3, 1, 7), At(2027, 3, 1, 12), At(2028, 2, 29),
          At(2028, 2, 29, 1), At(2028, 1, 1, 1), At(2028, 1, 1), At(2027, 12, 31, 22, 15, 30),
          At(2027, 12, 31, 23), At(2028, 3, 1)}) {
        for (std::time_t now = edge - 15; now <= edge + 15; ++now) {
            ExpectLikeTheModel(now, RealDates, RealWindows);
            ExpectLikeTheModel(now, RealDates, OddWindows);
            ExpectLikeTheModel(now, OddDates, RealWindows);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(ClockComparison, AnEntryStartsAndEndsOnTheSecond) {
    struct Case {
        const char* clock;
        const char* start;
        const char* end;
        bool forEnding;
        int expected;
    };
    const Case cases[] = {
        {"06:29:59", "06:30:00", "07:00:00", false, -1},
        {"06:30:00", "06:30:00", "07:00:00", false, 0},
        {"07:00:00", "06:30:00", "07:00:00", false, 0},
        {"07:00:01", "06:30:00", "07:00:00", false, 1},
        {"07:00:00", "06:30:00", "07:00:00", true, 0},
        {"07:00:01", "06:30:00", "07:00:00", true, 1},
        {"23:30:00", "23:00:00", "01:00:00", false, 0},
        {"00:30:00", "23:00:00", "01:00:00", false, -1}, // missed before midnight
        {"23:30:00", "23:00:00", "01:00:00", true, 0},
        {"00:30:00", "23:00:00", "01:00:00", true, 0},
        {"01:00:00", "23:00:00", "01:00:00", true, 0},
        {"01:00:01", "23:00:00", "01:00:00", true, 1},
        {"01:00:09", "23:00:00", "01:00:00", true, 1},
        {"01:00:10", "23:00:00", "01:00:00", true, -1}, // too late: the next night's
        {"01:00:11", "23:00:00", "01:00:00", true, -1},
        {"12:00:00", "12:00:00", "12:00:00", false, 0},
        {"12:00:01", "12:00:00", "12:00:00", true, 1},
        {"06:35:00", "6:30:0", "7:0:0", false, 0},
        {"06:35:00", "06:30", "07:00:00", false, -1},
        {"06:35:00", "06:30:00", "07:00:60", false, -1},
        {"06:35:00", "06:30:00 ", "07:00:00", false, -1},
    };
    for (const Case& c : cases) {
        int hour = 0;
        int minute = 0;
        int second = 0;
        std::sscanf(c.clock, "%d:%d:%d", &hour, &minute, &second);
        EXPECT_EQ(Compare(At(2027, 3, 1, hour, minute, second), "", c.start, c.end, c.forEnding),
                  c.expected)
            << c.clock << " " << c.start << "-" << c.end << (c.forEnding ? " for its end" : "");
    }
}

TEST(ClockComparison, DayCodesAreSoughtAnywhereInTheText) {
    const std::time_t sunday = At(2027, 2, 28);
    const std::vector<std::string> matching[] = {
        {"Su", "SuSa", "Sun"}, {"M", "MWF", "M,W,F", "Mon"}, {"Tu", "TuTh"}, {"W", "MWF"},
        {"Th", "TuTh", "Thu"}, {"F", "MWF", "Fri"},          {"Sa", "SuSa"},
    };
    for (int day = 0; day < 7; ++day) {
        const auto noon = static_cast<double>(sunday + day * 86400 + 43200 + Epoch1904);
        for (const std::string text : {"su", "m", "", "2027-03-01", "T", "S"}) {
            EXPECT_FALSE(DayIsToday(noon, text, 0)) << text << " on day " << day;
        }
        for (const std::string& text : matching[day]) {
            EXPECT_TRUE(DayIsToday(noon, text, 0)) << text << " on day " << day;
            EXPECT_EQ(DayIsToday(noon + 86400, text, 0), text == "SuSa" && day == 6) << text;
        }
        // Half a day further east it is tomorrow.
        EXPECT_TRUE(DayIsToday(noon, matching[(day + 1) % 7].front(), 12));
    }
}

TEST(ClockComparison, ATimeCellNeedsExactlyOneHyphen) {
    for (const char* cell : {"", "06:30:00", "1-2-3", "--", "-1-2"}) {
        EXPECT_FALSE(SplitTimeCell(cell)) << cell;
    }
    EXPECT_EQ(SplitTimeCell("06:30:00-07:00:00")->start, "06:30:00");
    EXPECT_EQ(SplitTimeCell("06:30:00-07:00:00")->end, "07:00:00");
    EXPECT_EQ(SplitTimeCell("-")->end, "");
}

TEST(ClockComparison, NoClockAndNoTextDoesHarm) {
    for (const double clock : {-1e300, -1.0, 0.0, 1e12, 1e300}) {
        for (const char* text : {"", ":", "99999999999999999999", "\xff\xfe", "23:59:59"}) {
            const int result = DateTimeCompare(clock, text, text, text, true);
            EXPECT_TRUE(result >= -1 && result <= 1);
        }
    }
}

} // namespace
} // namespace larkspool
