#include "shell/CommandLine.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

using Strings = std::vector<std::string>;

TEST(CommandLineArguments, NameTheSchedulesToOpenAndToEnableOrAskForAText) {
    const struct {
        Strings arguments;
        bool enable;
        Strings files;
        bool isUnderstood;
    } cases[] = {
        {{}, false, {}, true},
        {{"--enable", "a b.txt", "/c"}, true, {"a b.txt", "/c"}, true},
        {{"night.txt", "--enable"}, true, {"night.txt"}, true},
        {{"", "--", "--enable", "-x"}, false, {"--enable", "-x"}, true},
        {{"--enabled", "night.txt"}, false, {"night.txt"}, false},
    };
    for (const auto& c : cases) {
        const CommandLine read = ReadCommandLine(c.arguments);
        const std::string shown = testing::PrintToString(c.arguments);
        EXPECT_EQ(read.enable, c.enable) << shown;
        EXPECT_EQ(read.files, c.files) << shown;
        EXPECT_EQ(read.complaint.empty(), c.isUnderstood) << shown;
        EXPECT_FALSE(TextAskedFor(c.arguments)) << shown;
    }
    EXPECT_EQ(TextAskedFor(Strings{"-platform", "offscreen", "--version"}), "Larkspool 1.3.0b4\n");
    EXPECT_TRUE(TextAskedFor(Strings{"night.txt", "--help"})->starts_with("Usage: larkspool "));
    EXPECT_FALSE(TextAskedFor(Strings{"--", "--help"}));
}

} // namespace
} // namespace larkspool
