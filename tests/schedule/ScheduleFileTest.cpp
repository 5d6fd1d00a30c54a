#include "schedule/ScheduleFile.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

using Rows = std::vector<ScheduleRow>;

const ScheduleRow EveryDay = {"192.0.2.10:8073", "", "06:30:00-07:00:00", "1620", "amn",
                              "-2600,2600"};
const ScheduleRow OneDate = {"h:1", "2027-03-01", "22:00:00-23:30:00", "9420", "am", "-5000,5000"};
const std::string BothLines = "192.0.2.10:8073;;06:30:00-07:00:00;1620;amn;-2600,2600\n"
                              "h:1;2027-03-01;22:00:00-23:30:00;9420;am;-5000,5000\n";

Rows Read(const std::string& text) {
    auto lines = TextInputStream::FromText(text);
    return ReadSchedule(lines);
}

TEST(ScheduleFile, TheCountInTheFirstLineRules) {
    EXPECT_EQ(ScheduleText(Rows{EveryDay, OneDate}), "2\n" + BothLines);
    for (const auto& [count, rows] : {std::pair<std::string, std::size_t>{"2\r\n", 2},
                                      {"3\n", 2},
                                      {"1.9\n", 1},
                                      {"1e300\n", 2},
                                      {"nonsense\n", 0},
                                      {"-5\n", 0},
                                      {"0.9\n", 0}}) {
        const Rows read = Read(count + BothLines);
        EXPECT_EQ(read.size(), rows) << count;
        EXPECT_TRUE(read.empty() || read[0] == EveryDay) << count;
    }
}

TEST(ScheduleFile, ABadLineCostsItselfAlone) {
    EXPECT_EQ(Read("4\na;b;c;d;e;f;g\na;b;c;d;e\n" + BothLines), (Rows{EveryDay, OneDate}));
    EXPECT_EQ(Read("2\n\n" + BothLines), (Rows{EveryDay})) << "and counts as one of them";
    const ScheduleRow broken = {"a", "", "", "", "", "two\nlines\r"};
    EXPECT_EQ(Read(ScheduleText(Rows{broken, EveryDay})).back(), EveryDay)
        << "a line end in a cell has pushed another row out of the count";
}

} // namespace
} // namespace larkspool
