#include "demo/HttpPages.h"

#include <gtest/gtest.h>

#include <sstream>

namespace larkspool::demo {
namespace {

const PageSettings settings{"127.0.0.1", {8073, 8074, 8075, 8076, 8077, 8078, 8079}, "1.4.0"};

std::string Fetch(const std::string& target, const std::string& host = "127.0.0.1:8080") {
    return HttpResponse({"GET", target, {{"host", host}}}, settings);
}

std::string Body(const std::string& response) {
    return response.substr(response.find("\r\n\r\n") + 4);
}

// The addresses that stand on the line right behind a name's.
std::vector<std::string> Addresses(const std::string& page) {
    std::vector<std::string> found;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        const bool named = line.find("'cl-name'>") != std::string::npos &&
                           line.find("</span>") != std::string::npos;
        const std::string marker = "<a href='http://";
        if (!named || !std::getline(lines, line) || line.find(marker) == std::string::npos) {
            continue;
        }
        const std::string rest = line.substr(line.find(marker) + marker.size());
        const std::string address = rest.substr(0, rest.find('\''));
        if (std::count(address.begin(), address.end(), ':') == 1) {
            found.push_back(address);
        }
    }
    return found;
}

TEST(HttpPages, DirectoryListsTheSevenFirstAndHasWhatAClientMustDrop) {
    const std::string page = Body(Fetch("/public/"));
    const auto addresses = Addresses(page);
    ASSERT_EQ(addresses.size(), 12U);
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(addresses[i], "127.0.0.1:" + std::to_string(8073 + i));
    }
    EXPECT_NE(page.find("Grüße"), std::string::npos);
    EXPECT_NE(page.find("http://192.0.2.60/"), std::string::npos);
}

TEST(HttpPages, AddressesFollowTheNameThatTheClientUsesUnlessItIsHostile) {
    EXPECT_EQ(Addresses(Body(Fetch("/public/", "radio.local:8080")))[0], "radio.local:8073");
    EXPECT_EQ(Addresses(Body(Fetch("/public/", "a'><script>:80")))[0], "127.0.0.1:8073");
    EXPECT_EQ(Addresses(Body(Fetch("/public/", "")))[0], "127.0.0.1:8073");
}

TEST(HttpPages, NewerVersionIsOfferedToOlderProgramsOnly) {
    const std::string path = "/version/versionb.html";
    EXPECT_EQ(Body(Fetch(path + "?p=0001130M1207")), "1.4.0");
    EXPECT_EQ(Body(Fetch(path + "?p=0001140M1207")), "LATEST");
    EXPECT_EQ(Body(Fetch(path + "?p=0001150M1207")), "LATEST");
    EXPECT_EQ(Body(Fetch(path)), "1.4.0");
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
