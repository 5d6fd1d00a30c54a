#include "demo/Handshake.h"

#include <gtest/gtest.h>

namespace larkspool::demo {
namespace {

TEST(Handshake, LinksAreToldApartAndOthersRefused) {
    struct Case {
        std::string target, header;
        std::optional<LinkKind> kind;
    };
    for (const auto& [target, header, kind] :
         {Case{"/kiwi/1700000000/SND", "Upgrade: webSocket", LinkKind::Sound},
          Case{"/kiwi/1700000000/W/F", "upgrade:WEBSOCKET", LinkKind::Waterfall},
          Case{"/kiwi/1700000000/SND", "X: y", std::nullopt},
          Case{"/kiwi/1700000000/snd", "Upgrade: websocket", std::nullopt},
          Case{"/kiwi//SND", "Upgrade: websocket", std::nullopt},
          Case{"/kiwi/12ab/SND", "Upgrade: websocket", std::nullopt},
          Case{"/", "Upgrade: websocket", std::nullopt}}) {
        std::string head = "GET ";
        head.append(target).append(" HTTP/1.1\r\nHost: x\r\n").append(header).append("\r\n\r\n");
        for (std::size_t size = 0; size < head.size(); ++size) {
            EXPECT_FALSE(HeadSize(std::string_view(head).substr(0, size))) << size;
        }
        EXPECT_EQ(HeadSize(head + "behind"), head.size());
        const auto request = ParseRequest(head);
        ASSERT_TRUE(request) << target;
        EXPECT_EQ(RequestedLink(*request), kind) << target << ' ' << header;
    }
}

TEST(Handshake, NonsenseIsNoRequest) {
    for (const char* text : {"", "\r\n\r\n", "GET\r\n\r\n", "GET /\r\n\r\n", "\x82\x85\r\n\r\n",
                             "GET / FTP/1.1\r\n\r\n"}) {
        EXPECT_FALSE(ParseRequest(text)) << text;
    }
}

} // namespace
} // namespace larkspool::demo
