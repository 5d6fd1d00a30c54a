#include "demo/Handshake.h"
#include "demo/HttpPages.h"

#include "directory/DirectoryScanner.h"

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

std::string Fetch(const std::string& target, const std::string& host = "127.0.0.1:8080") {
    const PageSettings settings{"127.0.0.1", {8073, 8074, 8075, 8076, 8077, 8078, 8079}, "1.4.0"};
    return HttpResponse({"GET", target, {{"host", host}}}, settings);
}

std::string Body(const std::string& response) {
    return response.substr(response.find("\r\n\r\n") + 4);
}

TEST(HttpPages, DirectoryListsTheSevenFirstUnderTheNameThatTheClientUsesUnlessItIsHostile) {
    for (const auto& [asked, host] :
         {std::pair{"radio.local:8080", "radio.local"}, std::pair{"a'><script>:80", "127.0.0.1"},
          std::pair{"", "127.0.0.1"}}) {
        const std::string page = Body(Fetch("/public/", asked));
        ReceiverList found;
        DirectoryScanner(found).ScanPage(page);
        ASSERT_EQ(found.Count(), 12U) << asked;
        for (std::size_t i = 0; i < 7; ++i) {
            EXPECT_EQ(found.urls[i], host) << asked;
            EXPECT_EQ(found.ports[i], static_cast<std::int64_t>(8073 + i)) << asked;
        }
        EXPECT_NE(page.find("http://192.0.2.60/"), std::string::npos) << "what it must drop";
    }
}

TEST(HttpPages, NewerVersionIsOfferedToOlderProgramsOnly) {
    for (const auto& [query, told] :
         {std::pair{"?p=0001130M1207", "1.4.0"}, std::pair{"?p=0001140M1207", "LATEST"},
          std::pair{"?p=0001150M1207", "LATEST"}, std::pair{"", "1.4.0"}}) {
        EXPECT_EQ(Body(Fetch(std::string("/version/versionb.html") + query)), told) << query;
    }
}

} // namespace
} // namespace larkspool::demo
