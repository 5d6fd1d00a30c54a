#include "support/AutoReceivers.h"

#include "platform/Text.h"
#include "support/VirtualReceiver.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr double Latency = 0.02; // seconds
constexpr double FramePeriod =
    static_cast<double>(AutoReceivers::FrameSamples) / AutoReceivers::Rate;

} // namespace

void AutoReceivers::Attach() {
    for (VirtualTCPSocket* socket : desktop.tcpSockets) {
        socket->onConnect = [this, socket] { AnswerConnect(*socket); };
    }
}

void AutoReceivers::LoseLinks() {
    for (VirtualTCPSocket* socket : desktop.tcpSockets) {
        socket->Fail();
    }
}

void AutoReceivers::AnswerConnect(VirtualTCPSocket& socket) {
    const auto found =
        std::find(receivers.begin(), receivers.end(), socket.address + ":" + Str(socket.port));
    if (found == receivers.end()) {
        socket.Fail();
        return;
    }
    socket.Accept();
    desktop.queue.After(Latency, [&socket] {
        socket.TakeSent(); // the upgrade request
        VirtualReceiver(socket).Upgrade();
    });
    if (&socket == desktop.tcpSockets.front()) { // the one for sound
        desktop.queue.After(2 * Latency, [this, &socket, number = found - receivers.begin() + 1] {
            Greet(socket, Str(number));
        });
    }
}

void AutoReceivers::Greet(VirtualTCPSocket& socket, const std::string& number) {
    if (areFull) {
        VirtualReceiver(socket).Message(" too_busy=4");
        return;
    }
    VirtualReceiver(socket).Message(" audio_init=0 audio_rate=" + Str(Rate));
    StreamOn(socket, number, 0);
}

// Ends with the link: the console takes longer to connect again than a frame lasts.
void AutoReceivers::StreamOn(VirtualTCPSocket& socket, const std::string& number,
                             std::uint32_t sequence) {
    desktop.queue.After(FramePeriod, [this, &socket, number, sequence] {
        if (!socket.IsConnected()) {
            return;
        }
        NoteTuning(CommandsIn(socket.TakeSent()));
        const std::string text = number + " " + tuning;
        std::vector<std::int16_t> samples(text.begin(), text.end());
        samples.resize(FrameSamples);
        VirtualReceiver(socket).Sound(sequence, samples);
        StreamOn(socket, number, sequence + 1);
    });
}

void AutoReceivers::NoteTuning(const std::vector<std::string>& commands) {
    for (const std::string& command : commands) {
        if (command.starts_with("SET mod=")) { // mod=usb low_cut=300 high_cut=2700 freq=1620
            const auto words = SplitB(command, " ");
            const auto value = [&words](std::size_t i) {
                return std::string(words.at(i).substr(words.at(i).find('=') + 1));
            };
            tuning = value(4) + " " + value(1) + " " + value(2) + " " + value(3);
        }
    }
}

} // namespace larkspool
