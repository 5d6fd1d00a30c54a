#include "directory/PastedUrl.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(PastedUrl, HostAndPortAreTakenOutOfAWebAddress) {
    const struct {
        std::string text;
        const char* host;
        const char* port;
    } cases[] = {
        {"http://192.0.2.10:8073/", "192.0.2.10", "8073"},
        {"http://lark.example:8074/?f=9750am", "lark.example", "8074"},
        {"http://192.0.2.10:abc", "192.0.2.10", "0"},
        {"http://:", "", "0"},
        {"http://h:8073.50x", "h", "8073.5"},
        {"http://" + std::string(198, 'h') + ":89", nullptr, "8"},
    };
    for (const auto& [text, host, port] : cases) {
        const auto parsed = ParsePastedUrl(text);
        ASSERT_TRUE(parsed) << text;
        EXPECT_EQ(parsed->host, host == nullptr ? std::string(198, 'h') : host);
        EXPECT_EQ(parsed->port, port) << text;
    }
}

TEST(PastedUrl, EverythingElseStaysAsItIs) {
    for (const std::string& text :
         {std::string(), std::string("192.0.2.10"), std::string("192.0.2.10:8073"),
          std::string("http://192.0.2.10"), std::string("https://192.0.2.10:8073"),
          std::string(" http://192.0.2.10:8073"), std::string("http://[::1]:8073"),
          std::string("http://u:p@h:1"), "http://" + std::string(200, 'h') + ":8073"}) {
        EXPECT_FALSE(ParsePastedUrl(text)) << text;
    }
}

TEST(PastedUrl, TheLimitCountsCharactersAndNotBytes) {
    std::string host;
    for (int i = 0; i < 190; ++i) {
        host += "ü";
    }
    EXPECT_EQ(ParsePastedUrl("http://" + host + ":8073")->port, "8073");
    EXPECT_FALSE(ParsePastedUrl("http://" + host + "üüüüüüüüüü:8073"));
}

} // namespace
} // namespace larkspool
