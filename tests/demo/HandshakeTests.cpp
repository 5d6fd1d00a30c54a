#include "demo/Handshake.h"

#include <gtest/gtest.h>

namespace larkspool::demo {
namespace {

std::string RequestFor(const std::string& target, const std::string& headers) {
    return "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1:8073\r\n" + headers + "\r\n";
}

TEST(Handshake, LinksAreToldApartAndOthersRefused) {
    struct Case {
        std::string target, headers;
        std::optional<LinkKind> kind;
    };
    const Case cases[] = {
        {"/kiwi/1700000000/SND", "Upgrade: webSocket\r\n", LinkKind::Sound},
        {"/kiwi/1700000000/W/F", "upgrade:WEBSOCKET\r\n", LinkKind::Waterfall},
        {"/kiwi/1700000000/SND", "", std::nullopt},
        {"/kiwi/1700000000/snd", "Upgrade: websocket\r\n", std::nullopt},
        {"/kiwi//SND", "Upgrade: websocket\r\n", std::nullopt},
        {"/kiwi/12ab/SND", "Upgrade: websocket\r\n", std::nullopt},
        {"/", "Upgrade: websocket\r\n", std::nullopt},
    };
    for (const Case& one : cases) {
        const auto request = ParseRequest(RequestFor(one.target, one.headers));
        ASSERT_TRUE(request) << one.target;
        EXPECT_EQ(RequestedLink(*request), one.kind) << one.target << ' ' << one.headers;
    }
}

TEST(Handshake, HeadIsKnownWholeOnlyWithItsEmptyLine) {
    const std::string head = RequestFor("/", "");
    for (std::size_t size = 0; size < head.size(); ++size) {
        EXPECT_FALSE(HeadSize(std::string_view(head).substr(0, size)));
    }
    EXPECT_EQ(HeadSize(head + "behind"), head.size());
}

TEST(Handshake, NonsenseIsNoRequest) {
    for (const char* text : {"", "\r\n\r\n", "GET\r\n\r\n", "GET /\r\n\r\n", "\x82\x85\r\n\r\n",
                             "GET / FTP/1.1\r\n\r\n"}) {
        EXPECT_FALSE(ParseRequest(text)) << text;
    }
}

} // namespace
} // namespace larkspool::demo
