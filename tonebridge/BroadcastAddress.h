#pragma once

#include <span>
#include <string>

namespace tonebridge {

// One network interface, as far as sending to everyone is concerned.
struct NetworkInterface {
    std::string address;   // IPv4, dotted
    std::string broadcast; // empty where it can't broadcast
    bool isUp = false;
};

// Where datagrams for everyone on the local network go, dotted: the broadcast
// address of the interface that has the default route, if it can broadcast,
// else of the first interface that is up and can, else 127.255.255.255. Asks
// the system anew at each call, which takes some 50 microseconds.
std::string BroadcastAddress();

// The same choice among the given interfaces; `routeAddress` is the own address
// towards the default route, empty where there is no such route.
std::string ChooseBroadcastAddress(std::span<const NetworkInterface> interfaces,
                                   const std::string& routeAddress);

} // namespace tonebridge
