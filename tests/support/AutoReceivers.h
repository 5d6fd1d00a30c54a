#pragma once

#include "link/Handshake.h"
#include "platform/Text.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <sstream>

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

    void Attach() { // stand at the other end of the console's links from now on
        for (VirtualTCPSocket* socket : desktop.tcpSockets) {
            socket->onConnect = [this, socket] { AnswerConnect(*socket); };
        }
    }

    bool areFull = false; // refuse everybody

  protected:
    static constexpr double Latency = 0.02; // seconds
    static constexpr double FramePeriod = static_cast<double>(FrameSamples) / Rate;

    // For receivers of another kind. A connect to one of the addresses succeeds.
    virtual bool Answers(const VirtualTCPSocket&) { return true; }
    virtual int SampleRate() const { return Rate; }
    // Sends what comes next on a link; in so many seconds comes what follows it, 0: nothing does.
    virtual double SendNext(VirtualTCPSocket& socket) {
        if (!IsAudio(socket)) {
            return 0;
        }
        for (const std::string& command : CommandsIn(socket.TakeSent())) {
            if (command.starts_with("SET mod=")) {
                tuning = TuningIn(command);
            }
        }
        const std::string text = Str(number) + " " + tuning;
        std::vector<std::int16_t> samples(text.begin(), text.end());
        samples.resize(FrameSamples);
        VirtualReceiver(socket).Sound(sequence++, samples);
        return FramePeriod;
    }

    bool IsAudio(const VirtualTCPSocket& socket) const {
        return &socket == desktop.tcpSockets.front();
    }

    VirtualDesktop& desktop;
    std::uint32_t sequence = 0; // of the audio frames
    std::string gatewayHeaders; // more lines of the reply to the upgrade

  private:
    static std::string TuningIn(const std::string& command) { // mod, low_cut, high_cut, freq
        std::istringstream words(command);
        std::string mode, low, high, freq;
        for (std::string* value : {&mode, &low, &high, &freq}) {
            words.ignore(99, '=') >> *value;
        }
        return freq + " " + mode + " " + low + " " + high;
    }
    // Void if the link has ended meanwhile.
    void Later(VirtualTCPSocket& socket, double seconds, std::function<void()> event) {
        desktop.queue.After(seconds, [&socket, link = socket.connects, event = std::move(event)] {
            if (socket.IsConnected() && socket.connects == link) {
                event();
            }
        });
    }
    void AnswerConnect(VirtualTCPSocket& socket) {
        const auto found =
            std::ranges::find(receivers, HostPort(socket.address, std::int64_t{socket.port}));
        if (found == receivers.end() || !Answers(socket)) {
            socket.Fail();
            return;
        }
        number = found - receivers.begin() + 1;
        socket.Accept();
        Later(socket, Latency, [this, &socket] {
            socket.TakeSent(); // the upgrade request
            VirtualReceiver(socket).Upgrade(gatewayHeaders);
            Later(socket, Latency, [this, &socket] { Greet(socket); });
        });
    }
    void Greet(VirtualTCPSocket& socket) {
        if (IsAudio(socket)) {
            VirtualReceiver(socket).Message(
                areFull ? " too_busy=4" : " audio_init=0 audio_rate=" + Str(SampleRate()));
        }
        if (!IsAudio(socket) || !areFull) {
            Later(socket, FramePeriod, [this, &socket] { StreamOn(socket); });
        }
    }
    void StreamOn(VirtualTCPSocket& socket) {
        const double pause = SendNext(socket);
        if (pause > 0) {
            Later(socket, pause, [this, &socket] { StreamOn(socket); });
        }
    }

    std::vector<std::string> receivers;
    std::ptrdiff_t number = 0; // of the one that was reached last
    std::string tuning;        // "1620 usb 300 2700"
};

} // namespace larkspool
