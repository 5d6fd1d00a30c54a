#include "schedule/ScheduleTexts.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

Date At(int year, int month, int day, int hour, int minute, int second) {
    Date date;
    date.SetCalendarDay(year, month, day);
    date.SetTimeOfDay(hour, minute, second);
    return date;
}

// "frequency|time", or the message.
std::string Read(const std::string& line) {
    const auto read = ParseStationLine(line, At(2027, 12, 31, 23, 59, 59));
    if (const auto* station = std::get_if<StationLine>(&read)) {
        return station->freq + "|" + station->time;
    }
    return std::get<std::string>(read);
}

TEST(ScheduleTexts, TheTitleIsAClock) {
    EXPECT_EQ(SkedTitle(At(2027, 3, 1, 6, 29, 58), true, 0),
              "Schedules  Enabled 2027-03-01 06:29:58 UTC  state: 0");
    EXPECT_EQ(SkedTitle(At(987, 12, 31, 0, 0, 0), false, 1),
              "Schedules  Disabled 0987-12-31 00:00:00 UTC  state: 1");
}

TEST(ScheduleTexts, ANewEntryRunsForFifteenSecondsAlsoOverMidnight) {
    EXPECT_EQ(NewEntryTimeText(At(2027, 3, 1, 9, 5, 1)), "09:05:06-09:05:21");
    EXPECT_EQ(NewEntryTimeText(At(2027, 12, 31, 23, 59, 50)), "23:59:55-00:00:10");
    EXPECT_EQ(NewEntryTimeText(At(2027, 12, 31, 23, 59, 55)), "00:00:00-00:00:15");
}

TEST(ScheduleTexts, ALineOfAStationListGivesFrequencyAndTime) {
    const struct {
        const char* line;
        const char* expected;
    } cases[] = {
        {"Station\t9410\t0600-0700\tEnglish", "9410|06:00:00-07:00:00"},
        {"Station\t9410\t0600-0700\tEnglish\r\n", "9410|06:00:00-07:00:00"},
        {"Station\t9410\t0630-745\r\n", "9410|06:30:00-07:45:00"},
        {"\t 9410.5 kHz\t2200-0000", " 9410.5 kHz|22:00:00-00:00:00"},
        {"\t9410\t2200-2400", "9410|22:00:00-00:00:00"},
        {"\t9410\t2330-2575", "9410|23:30:00-02:15:00"},
        {"\t\tab-cd", "|00:00:00-00:00:00"},
        {"\t\t-", "|00:00:00-00:00:00"},
        {"Station\t9410", "Incorrect text in the clipboard"},
        {"", "Incorrect text in the clipboard"},
        {"\t9410\t", "Incorrect time text in the clipboard"},
        {"\t9410\t0600-0700-0800", "Incorrect time text in the clipboard"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Read(c.line), c.expected) << c.line;
    }
    for (const char* huge : {"\t\t1e300-1e300", "\t\t999999999999-+1e9"}) {
        EXPECT_EQ(Read(huge).size(), std::string("|00:00:00-00:00:00").size()) << huge;
    }
}

} // namespace
} // namespace larkspool
