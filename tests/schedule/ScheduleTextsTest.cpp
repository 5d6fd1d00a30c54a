#include "schedule/ScheduleTexts.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

// "frequency|time", or the message.
std::string Read(const std::string& line) {
    const auto lastSecondOfAYear = Date::FromUnixSeconds(1830297599);
    const auto read = ParseStationLine(line, lastSecondOfAYear);
    if (const auto* station = std::get_if<StationLine>(&read)) {
        return station->freq + "|" + station->time;
    }
    return std::get<std::string>(read);
}

TEST(ScheduleTexts, ALineOfAStationListGivesFrequencyAndTime) {
    const struct {
        const char* line;
        const char* expected;
    } cases[] = {
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
