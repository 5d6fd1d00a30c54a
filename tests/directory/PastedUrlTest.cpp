#include "directory/PastedUrl.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(PastedUrl, HostAndPortAreTakenOutOfAWebAddress) {
    const std::string longHost(198, 'h');
    std::string umlauts;
    while (umlauts.size() < 380) {
        umlauts += "ü"; // two bytes
    }
    const std::tuple<std::string, std::string, const char*> cases[] = {
        {"http://192.0.2.10:8073/", "192.0.2.10", "8073"},
        {"http://lark.example:8074/?f=9750am", "lark.example", "8074"},
        {"http://192.0.2.10:abc", "192.0.2.10", "0"},
        {"http://h:8073.50x", "h", "8073.5"},
        {"http://" + longHost + ":89", longHost, "8"},
        {"http://" + umlauts + ":8073", umlauts, "8073"},
    };
    for (const auto& [text, host, port] : cases) {
        const auto parsed = ParsePastedUrl(text);
        ASSERT_TRUE(parsed) << text;
        EXPECT_EQ(parsed->host, host);
        EXPECT_EQ(parsed->port, port) << text;
    }
    EXPECT_FALSE(ParsePastedUrl("http://" + umlauts + "üüüüüüüüüü:8073"));
}

TEST(PastedUrl, EverythingElseStaysAsItIs) {
    for (const char* text : {"", "192.0.2.10:8073", "http://192.0.2.10", "https://192.0.2.10:8073",
                             " http://192.0.2.10:8073", "http://[::1]:8073", "http://u:p@h:1"}) {
        EXPECT_FALSE(ParsePastedUrl(text)) << text;
    }
}

TEST(TypedReceiver, IsSplitIntoHostAndPort) {
    struct Case {
        const char* address;
        const char* host;
        const char* port; // the field's own is "89"
    };
    for (const auto& [address, host, port] :
         {Case{"sdr.example.net", "sdr.example.net", "89"},
          Case{" lark.example\t", "lark.example", "89"},
          Case{"lark.example:8073", "lark.example", "8073"},
          Case{"http://lark.example:8073/", "lark.example", "8073"},
          Case{"https://lark.example:8073/some/path?f=1", "lark.example", "8073"},
          Case{"lark.example/path:1", "lark.example", "89"},
          Case{"lark.example:", "lark.example", "89"},
          Case{"lark.example:abc", "lark.example", "0"}, Case{"[::1]", "::1", "89"},
          Case{"[2001:db8::1]:8073", "2001:db8::1", "8073"},
          Case{"http://[2001:db8::1]:8073/", "2001:db8::1", "8073"}, Case{"::1", "::1", "89"},
          Case{"[::1", "[::1", "89"}, Case{"", "", "89"}, Case{"  ", "", "89"}}) {
        const PastedUrl typed = TidyReceiver(address, "89");
        EXPECT_EQ(typed.host, host) << address;
        EXPECT_EQ(typed.port, port) << address;
    }
}

} // namespace
} // namespace larkspool
