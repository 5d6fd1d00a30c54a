#include "tonebridge/BroadcastAddress.h"
#include "tonebridge/DatagramSender.h"
#include "tonebridge/DatagramSocket.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tonebridge::test {

namespace {

const NetworkInterface loopback{"127.0.0.1", "", true};
const NetworkInterface wire{"10.1.2.3", "10.1.255.255", true};
const NetworkInterface radio{"192.168.7.5", "192.168.7.255", true};
const NetworkInterface tunnel{"172.20.0.2", "", true};
const NetworkInterface unplugged{"10.9.9.9", "10.9.9.255", false};

TEST(BroadcastAddress, IsThatOfTheNetworkThatDatagramsShouldReach) {
    const struct {
        std::string what;
        std::vector<NetworkInterface> interfaces;
        std::string routeAddress;
        std::string expected;
    } choices[] = {
        {"the default route's", {loopback, wire, radio}, "192.168.7.5", "192.168.7.255"},
        {"a route that can't broadcast", {loopback, tunnel, wire}, "172.20.0.2", "10.1.255.255"},
        {"an interface that is down", {unplugged, wire}, "10.9.9.9", "10.1.255.255"},
        {"the loopback alone", {loopback}, "", "127.255.255.255"},
    };
    for (const auto& choice : choices) {
        EXPECT_EQ(ChooseBroadcastAddress(choice.interfaces, choice.routeAddress), choice.expected)
            << choice.what;
    }
}

TEST(DatagramSender, APeerGetsEachDatagramOnceAlsoWhenTheNetworkHasChanged) {
    const int peer = OpenDatagramSocket();
    sockaddr_in own{};
    own.sin_family = AF_INET;
    socklen_t length = sizeof own;
    ASSERT_EQ(bind(peer, reinterpret_cast<const sockaddr*>(&own), length), 0);
    ASSERT_EQ(getsockname(peer, reinterpret_cast<sockaddr*>(&own), &length), 0);
    int looked = 0;
    DatagramSender sender([&] { return ++looked == 1 ? "127.255.255.255" : "127.0.0.1"; });
    const auto send = [&](const std::string& text) {
        return sender.Send(std::as_bytes(std::span(text)), ntohs(own.sin_port));
    };
    const std::string block(1028, 'x');
    EXPECT_TRUE(send("freq:014250000"));
    EXPECT_TRUE(send(block));
    EXPECT_EQ(looked, 1) << "the network is looked for more than once a second";
    EXPECT_FALSE(send(std::string(70000, 'x')));
    EXPECT_EQ(looked, 2) << "a network that refuses may be another one";
    EXPECT_TRUE(send("c"));
    for (const std::string& expected : {std::string("freq:014250000"), block, std::string("c")}) {
        std::string received(2048, '\0');
        const ssize_t size = recv(peer, received.data(), received.size(), 0);
        EXPECT_EQ(received.substr(0, static_cast<std::size_t>(size)), expected);
    }
    close(peer);
}

} // namespace

} // namespace tonebridge::test
