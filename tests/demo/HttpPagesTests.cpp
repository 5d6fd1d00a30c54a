#include "demo/HttpPages.h"

#include "directory/DirectoryScanner.h"

#include <gtest/gtest.h>

namespace larkspool::demo {
namespace {

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

TEST(HttpPages, EveryAnswerSaysItsLengthAndCloses) {
    for (const char* target : {"/", "/public/", "/nowhere", "/version/versionb.html"}) {
        const std::string response = Fetch(target);
        const std::string length =
            "Content-Length: " + std::to_string(Body(response).size()) + "\r\n";
        EXPECT_NE(response.find(length), std::string::npos) << target;
        EXPECT_NE(response.find("Connection: close\r\n"), std::string::npos) << target;
    }
    EXPECT_TRUE(Fetch("/nowhere").starts_with("HTTP/1.1 404"));
}

} // namespace
} // namespace larkspool::demo
