#pragma once

#include "support/VirtualDesktop.h"

#include <cstdint>
#include <functional>
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
    virtual ~AutoReceivers() = default;

    void Attach();    // stand at the other end of the console's links from now on
    void LoseLinks(); // that stand: the network has failed for a moment

    bool areFull = false; // refuse everybody

  protected:
    // For receivers of another kind. A connect to one of the addresses succeeds.
    virtual bool Answers(const VirtualTCPSocket&) { return true; }
    virtual int SampleRate() const { return Rate; }
    // Sends what comes next on a link; in so many seconds comes what follows it, 0: nothing does.
    virtual double SendNext(VirtualTCPSocket& socket, const std::string& number);

    bool IsAudio(const VirtualTCPSocket& socket) const {
        return &socket == desktop.tcpSockets.front();
    }

    VirtualDesktop& desktop;
    std::uint32_t sequence = 0; // of the audio frames
    std::string gatewayHeaders; // more lines of the reply to the upgrade

  private:
    void AnswerConnect(VirtualTCPSocket& socket);
    void Greet(VirtualTCPSocket& socket, const std::string& number);
    void StreamOn(VirtualTCPSocket& socket, const std::string& number);
    // Void if the link has ended meanwhile.
    void Later(VirtualTCPSocket& socket, double seconds, std::function<void()> event);
    void NoteTuning(const std::vector<std::string>& commands);

    std::vector<std::string> receivers;
    std::string tuning; // "1620 usb 300 2700"
};

} // namespace larkspool
