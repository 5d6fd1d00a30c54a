#include "tonebridge/BroadcastAddress.h"

#include "tonebridge/DatagramSocket.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tonebridge {

namespace {

std::string Dotted(const sockaddr* address) {
    if (address == nullptr || address->sa_family != AF_INET) {
        return {};
    }
    sockaddr_in internet{};
    std::memcpy(&internet, address, sizeof internet);
    std::array<char, INET_ADDRSTRLEN> text{};
    if (internet.sin_addr.s_addr == INADDR_ANY ||
        inet_ntop(AF_INET, &internet.sin_addr, text.data(), text.size()) == nullptr) {
        return {};
    }
    return text.data();
}

std::vector<NetworkInterface> ListInterfaces() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        return {};
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(first, &freeifaddrs);
    std::vector<NetworkInterface> interfaces;
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
        const std::string address = Dotted(entry->ifa_addr);
        if (address.empty()) {
            continue;
        }
        const bool canBroadcast = (entry->ifa_flags & IFF_BROADCAST) != 0;
        interfaces.push_back({address, canBroadcast ? Dotted(entry->ifa_broadaddr) : std::string{},
                              (entry->ifa_flags & IFF_UP) != 0});
    }
    return interfaces;
}

// Connecting a datagram socket sends nothing, but makes the system choose the route, and with it
// the local address, towards a host beyond the local network.
std::string DefaultRouteAddress() {
    const int handle = OpenDatagramSocket();
    if (handle < 0) {
        return {};
    }
    sockaddr_in beyond{};
    beyond.sin_family = AF_INET;
    beyond.sin_port = htons(9);
    inet_pton(AF_INET, "198.51.100.1", &beyond.sin_addr);
    sockaddr_storage own{};
    socklen_t length = sizeof own;
    std::string address;
    if (connect(handle, reinterpret_cast<const sockaddr*>(&beyond), sizeof beyond) == 0 &&
        getsockname(handle, reinterpret_cast<sockaddr*>(&own), &length) == 0) {
        address = Dotted(reinterpret_cast<const sockaddr*>(&own));
    }
    close(handle);
    return address;
}

} // namespace

std::string BroadcastAddress() {
    const std::vector<NetworkInterface> interfaces = ListInterfaces();
    return ChooseBroadcastAddress(interfaces, DefaultRouteAddress());
}

std::string ChooseBroadcastAddress(std::span<const NetworkInterface> interfaces,
                                   const std::string& routeAddress) {
    const auto canBroadcast = [](const NetworkInterface& entry) {
        return entry.isUp && !entry.broadcast.empty();
    };
    auto found = std::ranges::find_if(interfaces, [&](const NetworkInterface& entry) {
        return canBroadcast(entry) && entry.address == routeAddress;
    });
    if (found == interfaces.end()) {
        found = std::ranges::find_if(interfaces, canBroadcast);
    }
    return found == interfaces.end() ? "127.255.255.255" : found->broadcast;
}

} // namespace tonebridge
