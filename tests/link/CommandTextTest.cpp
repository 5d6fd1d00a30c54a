#include "link/CommandText.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(CommandText, TheWaterfallStartsAtWholeStepsInPlainDigits) {
    const std::pair<double, const char*> cases[] = {
        {10000 - 7.328, "SET zoom=11 start=5588305"}, {0, "SET zoom=11 start=0"},
        {1 - 7.328, "SET zoom=11 start=-3539"},       {30000 - 7.328, "SET zoom=11 start=16773112"},
        {1e12, "SET zoom=11 start=559240327938528"},
    };
    for (const auto& [start, expected] : cases) {
        EXPECT_EQ(command::Waterfall(3, 0, 11, start)[1], expected) << start;
    }
    const auto all = command::Waterfall(3, 0, 11, 0);
    EXPECT_EQ(all[0], "SET maxdb=0 mindb=-200");
    EXPECT_EQ(all[2], "SET wf_speed=3");
    EXPECT_EQ(all[3], "SET wf_comp=0");
}

} // namespace
} // namespace larkspool
