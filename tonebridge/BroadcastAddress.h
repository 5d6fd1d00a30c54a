#pragma once

#include <span>
#include <string>

namespace tonebridge {

// What is known of one network interface.
struct NetworkInterface {
    std::string address;   // IPv4, dotted
    std::string broadcast; // empty if it can't broadcast
    bool isUp = false;
};

// The broadcast address of the local network, dotted: that of the interface with the default route
// if it can broadcast, otherwise of the first interface that is up and can broadcast, otherwise
// 127.255.255.255. Each call asks the system again, which takes some 50 microseconds.
std::string BroadcastAddress();

// The same choice among the given interfaces; routeAddress is the local address towards the default
// route, empty if there is no such route.
std::string ChooseBroadcastAddress(std::span<const NetworkInterface> interfaces,
                                   const std::string& routeAddress);

} // namespace tonebridge
