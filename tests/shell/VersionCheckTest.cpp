#include "shell/VersionCheck.h"

#include "platform/Desktop.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(UpdateCheck, TheServerIsToldWhatRunsOrWhatWasSkipped) {
    struct Case {
        int program;
        std::string running;
        std::uint32_t skipped;
        OperatingSystemVersion system;
        const char* query;
    };
    const Case cases[] = {
        {1, VersionDigits(1, 3, 0), 0, {12, 5}, "0001130M1205"},
        {1, VersionDigits(1, 3, 0), 140, {12, 5}, "0001140M1205"},
        {1, VersionDigits(1, 3, 0), 130, {12, 5}, "0001130M1205"},
        {1, VersionDigits(1, 3, 0), 121, {12, 5}, "0001130M1205"},
        {42, VersionDigits(1, 10, 0), 0, {6, 0}, "0042110M0600"},
        {12345, VersionDigits(1, 3, 0), 4294967295, {22, 104}, "1234429M2210"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(UpdateAddress("updates.example.net:8080",
                                MakeUpdateQuestion(c.program, c.running, c.skipped, c.system)),
                  std::string("http://updates.example.net:8080/version/versionb.html?p=") +
                      c.query);
    }
}

TEST(UpdateCheck, OnlyTheWordLatestMeansThatNothingIsNewer) {
    for (const char* reply : {"LATEST", "LATEST 1.4.0", "LATEST\n", "LATEST\r\n1.4.0"}) {
        EXPECT_FALSE(ReadUpdateReply(reply)) << reply;
    }
    struct Case {
        std::string content;
        const char* text;
        std::uint32_t digits;
    };
    const Case cases[] = {
        {"1.4.0", "1.4.0", 140},
        {"1.4.0 is out", "1.4.0", 140},
        {"1.4.0\r\n", "1.4.0", 140},
        {"", "", 0},
        {" LATEST", "", 0},
        {"latest", "latest", 0},
        {"-3", "-3", 0},
        {"9999999999.9", "9999999999.9", 4294967295},
        {"<!DOCTYPE html>", "<!DOCTYPE", 0},
    };
    for (const Case& c : cases) {
        const auto newer = ReadUpdateReply(c.content);
        ASSERT_TRUE(newer) << c.content;
        EXPECT_EQ(newer->text, c.text);
        EXPECT_EQ(newer->digits, c.digits) << c.content;
    }
    EXPECT_LE(ReadUpdateReply(std::string(1'000'000, 'x'))->text.size(), 100U);
}

} // namespace
} // namespace larkspool
