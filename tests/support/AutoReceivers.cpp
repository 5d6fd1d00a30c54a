#include "support/AutoReceivers.h"

#include "link/Handshake.h"
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

void AutoReceivers::Later(VirtualTCPSocket& socket, double seconds, std::function<void()> event) {
    desktop.queue.After(seconds, [&socket, link = socket.connects, event = std::move(event)] {
        if (socket.IsConnected() && socket.connects == link) {
            event();
        }
    });
}

void AutoReceivers::AnswerConnect(VirtualTCPSocket& socket) {
    const auto found = std::find(receivers.begin(), receivers.end(),
                                 HostPort(socket.address, std::int64_t{socket.port}));
    if (found == receivers.end() || !Answers(socket)) {
        socket.Fail();
        return;
    }
    socket.Accept();
    Later(socket, Latency, [this, &socket, number = Str(found - receivers.begin() + 1)] {
        socket.TakeSent(); // the upgrade request
        socket.Deliver("HTTP/1.1 101 Switching Protocols\r\n" + gatewayHeaders + "\r\n");
        Later(socket, Latency, [this, &socket, number] { Greet(socket, number); });
    });
}

void AutoReceivers::Greet(VirtualTCPSocket& socket, const std::string& number) {
    if (IsAudio(socket)) {
        if (areFull) {
            VirtualReceiver(socket).Message(" too_busy=4");
            return;
        }
        VirtualReceiver(socket).Message(" audio_init=0 audio_rate=" + Str(SampleRate()));
    }
    Later(socket, FramePeriod, [this, &socket, number] { StreamOn(socket, number); });
}

void AutoReceivers::StreamOn(VirtualTCPSocket& socket, const std::string& number) {
    const double pause = SendNext(socket, number);
    if (pause > 0) {
        Later(socket, pause, [this, &socket, number] { StreamOn(socket, number); });
    }
}

double AutoReceivers::SendNext(VirtualTCPSocket& socket, const std::string& number) {
    if (!IsAudio(socket)) {
        return 0;
    }
    NoteTuning(CommandsIn(socket.TakeSent()));
    const std::string text = number + " " + tuning;
    std::vector<std::int16_t> samples(text.begin(), text.end());
    samples.resize(FrameSamples);
    VirtualReceiver(socket).Sound(sequence++, samples);
    return FramePeriod;
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
