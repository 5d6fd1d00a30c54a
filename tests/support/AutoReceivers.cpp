#include "support/AutoReceivers.h"

#include "console/ModeSettingsClass.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

constexpr double Latency = 0.02;     // seconds
constexpr double FramePeriod = 0.25; // likewise

std::int16_t ModeRowOf(std::string_view name) {
    const auto& captions = ModeSettingsClass::Captions;
    return static_cast<std::int16_t>(std::find(captions.begin(), captions.end(), name) -
                                     captions.begin());
}

} // namespace

void AutoReceivers::Attach() {
    VirtualTCPSocket& audio = *desktop.tcpSockets.at(0);
    VirtualTCPSocket& waterfall = *desktop.tcpSockets.at(1);
    audio.onConnect = [this, &audio] { AnswerConnect(audio, true); };
    waterfall.onConnect = [this, &waterfall] { AnswerConnect(waterfall, false); };
}

AutoReceivers::Receiver& AutoReceivers::Add(const std::string& addressAndPort) {
    Receiver& receiver = receivers[addressAndPort];
    receiver.number = static_cast<int>(receivers.size());
    return receiver;
}

void AutoReceivers::LoseLinks() {
    desktop.tcpSockets.at(0)->Fail();
    desktop.tcpSockets.at(1)->Fail();
}

void AutoReceivers::AnswerConnect(VirtualTCPSocket& socket, bool sound) {
    const auto found = receivers.find(socket.address + ":" + Str(socket.port));
    if (found == receivers.end()) {
        socket.Fail();
        return;
    }
    socket.Accept();
    if (!sound) {
        desktop.queue.After(Latency, [&socket] { VirtualReceiver(socket).Upgrade(); });
        return;
    }
    ++found->second.visits;
    connection = std::make_shared<int>(0);
    desktop.queue.After(Latency, [this, &socket, &receiver = found->second,
                                  token = std::weak_ptr<int>(connection)] {
        if (!token.expired()) {
            socket.TakeSent(); // the upgrade request
            VirtualReceiver(socket).Upgrade();
            desktop.queue.After(Latency, [this, &socket, &receiver, token] {
                if (!token.expired()) {
                    Greet(socket, receiver);
                }
            });
        }
    });
}

void AutoReceivers::Greet(VirtualTCPSocket& socket, Receiver& receiver) {
    const VirtualReceiver link(socket);
    if (receiver.isFull) {
        link.Message(" too_busy=4");
        return;
    }
    link.Message(" audio_init=0");
    link.Message(" audio_rate=" + Str(Rate));
    StreamOn(connection, socket, receiver, 0);
}

void AutoReceivers::StreamOn(const std::weak_ptr<int>& token, VirtualTCPSocket& socket,
                             const Receiver& receiver, std::uint32_t sequence) {
    desktop.queue.After(FramePeriod, [this, token, &socket, &receiver, sequence] {
        if (token.expired() || !socket.IsConnected()) {
            return;
        }
        NoteTuning(CommandsIn(socket.TakeSent()));
        tuning[Marker] = MarkerValue;
        tuning[Number] = static_cast<std::int16_t>(receiver.number);
        std::vector<std::int16_t> samples;
        while (samples.size() < static_cast<std::size_t>(Rate * FramePeriod)) {
            samples.insert(samples.end(), tuning.begin(), tuning.end());
        }
        VirtualReceiver(socket).Sound(sequence, samples);
        StreamOn(token, socket, receiver, sequence + 1);
    });
}

void AutoReceivers::NoteTuning(const std::vector<std::string>& commands) {
    for (const std::string& command : commands) {
        if (!Contains(command, "SET mod=")) {
            continue;
        }
        for (const std::string_view word : SplitB(command, " ")) {
            const auto pair = SplitB(word, "=");
            if (pair.size() != 2) {
                continue;
            }
            const auto value = WholePart<std::int16_t>(Val(pair[1]));
            if (pair[0] == "mod") {
                tuning[ModeRow] = ModeRowOf(pair[1]);
            } else if (pair[0] == "low_cut") {
                tuning[LowCut] = value;
            } else if (pair[0] == "high_cut") {
                tuning[HighCut] = value;
            } else if (pair[0] == "freq") {
                tuning[FreqKHz] = value;
            }
        }
    }
}

} // namespace larkspool
