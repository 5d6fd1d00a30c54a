#pragma once

#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {

// Receivers that answer by themselves while the virtual clock runs: they take the connection, speak
// WebSocket and stream. What they stream says how they are tuned: the samples are the fields of
// HeardSample over and over, so that a recording tells what it is a recording of.
class AutoReceivers {
  public:
    static constexpr int Rate = 120; // samples a second: slow, so that a night is soon over

    enum HeardSample { Marker, Number, FreqKHz, ModeRow, LowCut, HighCut, HeardSamples };
    static constexpr std::int16_t MarkerValue = 12345;

    struct Receiver {
        int number = 0;
        bool isFull = false; // refuses everybody
        int visits = 0;      // connections so far
    };

    explicit AutoReceivers(VirtualDesktop& host) : desktop(host) {}

    // Stand at the other end of the console's links from now on.
    void Attach();

    // A receiver by "address:port". Whatever isn't named here can't be reached.
    Receiver& Add(const std::string& addressAndPort);
    Receiver& Named(const std::string& addressAndPort) { return receivers.at(addressAndPort); }

    void LoseLinks(); // that stand: the network has failed for a moment

  private:
    void AnswerConnect(VirtualTCPSocket& socket, bool sound);
    void Greet(VirtualTCPSocket& socket, Receiver& receiver);
    void StreamOn(const std::weak_ptr<int>& token, VirtualTCPSocket& socket,
                  const Receiver& receiver, std::uint32_t sequence);
    void NoteTuning(const std::vector<std::string>& commands);

    VirtualDesktop& desktop;
    std::map<std::string, Receiver> receivers;
    std::shared_ptr<int> connection; // the audio link's, renewed with each
    std::vector<std::int16_t> tuning = std::vector<std::int16_t>(HeardSamples);
};

} // namespace larkspool
