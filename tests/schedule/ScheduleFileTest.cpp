#include "schedule/ScheduleFile.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace larkspool {
namespace {

using Rows = std::vector<ScheduleRow>;

const ScheduleRow EveryDay = {"192.0.2.10:8073", "", "06:30:00-07:00:00", "1620", "amn",
                              "-2600,2600"};
const ScheduleRow OneDate = {"192.0.2.11:8073", "2027-03-01", "22:00:00-23:30:00", "9420", "am",
                             "-5000,5000"};
const std::string BothLines = "192.0.2.10:8073;;06:30:00-07:00:00;1620;amn;-2600,2600\n"
                              "192.0.2.11:8073;2027-03-01;22:00:00-23:30:00;9420;am;-5000,5000\n";

Rows Read(const std::string& text) {
    auto lines = TextInputStream::FromText(text);
    return ReadSchedule(lines);
}

TEST(ScheduleFile, SavedRowsComeBackByteForByte) {
    EXPECT_EQ(ScheduleText({}), "0\n");
    EXPECT_EQ(Read("0\n"), Rows());
    const Rows rows = {EveryDay, OneDate, {}, {" a", "\xff", "\t", "\xE2\x82\xAC", "-", "\""}};
    EXPECT_EQ(ScheduleText(std::span(rows).first(2)), "2\n" + BothLines);
    EXPECT_EQ(Read(ScheduleText(rows)), rows);
}

TEST(ScheduleFile, TheCountInTheFirstLineRules) {
    EXPECT_EQ(Read("2\r\n" + BothLines), (Rows{EveryDay, OneDate}));
    EXPECT_EQ(Read("3\n" + BothLines), (Rows{EveryDay, OneDate}));
    EXPECT_EQ(Read("1\n" + BothLines), (Rows{EveryDay}));
    EXPECT_EQ(Read("1.9\n" + BothLines), (Rows{EveryDay}));
    for (const char* huge : {"9223372036854775808", "1e300", "999999999999999999999999"}) {
        EXPECT_EQ(Read(std::string(huge) + "\n" + BothLines), (Rows{EveryDay, OneDate})) << huge;
    }
    for (const char* none : {"", "nonsense", "-5", "0.9", ";;;;;"}) {
        EXPECT_EQ(Read(std::string(none) + "\n" + BothLines), Rows()) << none;
    }
}

TEST(ScheduleFile, ABadLineCostsItselfAlone) {
    EXPECT_EQ(Read("4\na;b;c;d;e;f;g\na;b;c;d;e\n" + BothLines), (Rows{EveryDay, OneDate}));
    EXPECT_EQ(Read("2\n\n" + BothLines), (Rows{EveryDay})) << "and counts as one of them";
    const ScheduleRow quoted = {"a;b", "", "", "", "", ""};
    EXPECT_EQ(Read(ScheduleText(Rows{quoted, EveryDay})), (Rows{EveryDay}));
    const ScheduleRow broken = {"a", "", "", "", "", "two\nlines\r"};
    EXPECT_EQ(Read(ScheduleText(Rows{broken, EveryDay})).back(), EveryDay)
        << "a line end in a cell has pushed another row out of the count";
}

} // namespace
} // namespace larkspool
