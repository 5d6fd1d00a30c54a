#pragma once

#include "support/VirtualDesktop.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace larkspool {

// Receivers that answer by themselves while the virtual clock runs: they take the connection, speak
// WebSocket and stream. What they stream says how they are tuned: the samples of each frame are the
// characters of "2 1620 usb 300 2700", so that a recording tells what it is a recording of.
class AutoReceivers {
  public:
    static constexpr int Rate = 120; // samples a second: slow, so that a night is soon over
    static constexpr std::size_t FrameSamples = 30;

    // By "address:port", numbered from 1. Whatever isn't named here can't be reached.
    AutoReceivers(VirtualDesktop& host, std::vector<std::string> addressesAndPorts)
        : desktop(host), receivers(std::move(addressesAndPorts)) {}

    void Attach();    // stand at the other end of the console's links from now on
    void LoseLinks(); // that stand: the network has failed for a moment

    bool areFull = false; // refuse everybody

  private:
    void AnswerConnect(VirtualTCPSocket& socket);
    void Greet(VirtualTCPSocket& socket, const std::string& number);
    void StreamOn(VirtualTCPSocket& socket, const std::string& number, std::uint32_t sequence);
    void NoteTuning(const std::vector<std::string>& commands);

    VirtualDesktop& desktop;
    std::vector<std::string> receivers;
    std::string tuning; // "1620 usb 300 2700"
};

} // namespace larkspool
