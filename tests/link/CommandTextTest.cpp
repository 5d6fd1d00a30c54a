#include "link/CommandText.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(CommandText, ReadsAsReceiversExpectIt) {
    const std::pair<std::string, const char*> cases[] = {
        {command::Modulation("lsb", -2700, -100, "7055.00"),
         "SET mod=lsb low_cut=-2700 high_cut=-100 freq=7055.00"},
        {command::SetAgc({.on = true,
                          .hang = false,
                          .threshold = -130,
                          .slope = 6,
                          .decay = 1000,
                          .manualGain = 50}),
         "SET agc=1 hang=0 thresh=-130 slope=6 decay=1000 manGain=50"},
        {command::Identity(""), "SET ident_user="},
        {command::GeoLocation("Bergen"), "SET geoloc=Bergen"},
        {command::Squelch(7, 0.2), "SET squelch=7 param=0.2"},
        {command::DeEmphasis(2), "SET de_emp=2"},
        {command::Mute(true), "SET mute=1"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(text, expected);
    }
}

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
