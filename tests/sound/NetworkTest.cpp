#include "tonebridge/BroadcastAddress.h"
#include "tonebridge/DatagramSender.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
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

struct Choice {
    std::string what;
    std::vector<NetworkInterface> interfaces;
    std::string routeAddress;
    std::string expected;
};

TEST(BroadcastAddress, IsThatOfTheNetworkThatDatagramsShouldReach) {
    const std::vector<Choice> choices{
        {"the default route's", {loopback, wire, radio}, "192.168.7.5", "192.168.7.255"},
        {"a route that can't broadcast", {loopback, tunnel, wire}, "172.20.0.2", "10.1.255.255"},
        {"no default route", {loopback, radio, wire}, "", "192.168.7.255"},
        {"an interface that is down", {unplugged, wire}, "10.9.9.9", "10.1.255.255"},
        {"the loopback alone", {loopback}, "", "127.255.255.255"},
        {"nothing at all", {}, "", "127.255.255.255"},
    };
    for (const Choice& choice : choices) {
        EXPECT_EQ(ChooseBroadcastAddress(choice.interfaces, choice.routeAddress), choice.expected)
            << choice.what;
    }
}

// A peer on the same computer.
class Peer {
  public:
    Peer() : handle(socket(AF_INET, SOCK_DGRAM, 0)) {
        sockaddr_in own{};
        own.sin_family = AF_INET;
        socklen_t length = sizeof own;
        EXPECT_EQ(bind(handle, reinterpret_cast<const sockaddr*>(&own), sizeof own), 0);
        EXPECT_EQ(getsockname(handle, reinterpret_cast<sockaddr*>(&own), &length), 0);
        port = ntohs(own.sin_port);
    }
    ~Peer() { close(handle); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    std::uint16_t Port() const { return port; }

    // The next datagram; nothing where none comes.
    std::string Receive() const {
        const timeval patience{0, 200000};
        setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        std::array<char, 2048> buffer{};
        const ssize_t size = recv(handle, buffer.data(), buffer.size(), 0);
        return size < 0 ? "nothing" : std::string(buffer.data(), static_cast<std::size_t>(size));
    }

  private:
    int handle;
    std::uint16_t port = 0;
};

std::span<const std::byte> Bytes(const std::string& text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

TEST(DatagramSender, APeerGetsEachDatagramOnceAlsoWhenTheNetworkHasChanged) {
    const Peer peer;
    int looked = 0;
    DatagramSender sender([&] { return ++looked == 1 ? "127.255.255.255" : "127.0.0.1"; });
    const std::string block(1028, 'x');
    EXPECT_TRUE(sender.Send(Bytes("freq:014250000"), peer.Port()));
    EXPECT_TRUE(sender.Send(Bytes(block), peer.Port()));
    EXPECT_EQ(looked, 1) << "the network is looked for more than once a second";
    EXPECT_FALSE(sender.Send(Bytes(std::string(70000, 'x')), peer.Port()));
    EXPECT_EQ(looked, 2) << "a network that refuses may be another one";
    EXPECT_TRUE(sender.Send(Bytes("c"), peer.Port()));
    for (const std::string& expected : {std::string("freq:014250000"), block, std::string("c")}) {
        EXPECT_EQ(peer.Receive(), expected);
    }
    EXPECT_EQ(peer.Receive(), "nothing");
}

} // namespace

} // namespace tonebridge::test
