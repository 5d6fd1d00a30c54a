#pragma once

#include <span>
#include <string>

namespace tonebridge {

// One network interface, as needed for a broadcast.
struct NetworkInterface {
    std::string address;   // IPv4, dotted
    std::string broadcast; // empty if it can't broadcast
    bool isUp = false;
};

// Where datagrams for everyone on the local network go, dotted: the broadcast address of the
// interface that has the default route, if it can broadcast, otherwise of the first interface that
// is up and can, otherwise 127.255.255.255. Asks the system again at each call, which takes some 50
// microseconds.
std::string BroadcastAddress();

// The same choice among the given interfaces; routeAddress is the local address towards the default
// route, empty if there is no such route.
std::string ChooseBroadcastAddress(std::span<const NetworkInterface> interfaces,
                                   const std::string& routeAddress);

} // namespace tonebridge
