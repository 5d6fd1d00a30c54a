#include "soak/SoakReceiver.h"

#include "platform/Text.h"
#include "support/VirtualReceiver.h"

namespace larkspool::soak {

namespace {

constexpr double Latency = 0.03; // seconds
constexpr std::size_t ShortestFrame = 256;
constexpr std::size_t LongestFrame = 768;

// Mean seconds between the troubles.
constexpr double SingleLoss = 1.2;
constexpr double BurstOfLosses = 30;
constexpr double CutAudio = 400;
constexpr double CutWaterfall = 1500;
constexpr double SilentSpell = 900;

} // namespace

void WriteSoundFrame(std::string& wire, const Piece& frame, std::uint32_t sequence) {
    std::string payload = "SND" + SoundBody(sequence, {}, 600);
    const std::size_t header = payload.size();
    payload.resize(header + 2 * frame.samples);
    for (std::size_t i = 0; i < frame.samples; ++i) {
        const auto sample = static_cast<std::uint16_t>(frame.At(i));
        payload[header + 2 * i] = static_cast<char>(sample >> 8U);
        payload[header + 2 * i + 1] = static_cast<char>(sample & 0xFFU);
    }
    wire = ServerFrame(payload);
}

std::string WaterfallFrame() {
    std::string payload = "W/F" + std::string(13, '\0');
    for (int bin = 0; bin < 1024; ++bin) {
        payload += static_cast<char>(60 + bin % 190);
    }
    return ServerFrame(payload);
}

SoakReceiver::SoakReceiver(VirtualDesktop& host, Books& account, std::uint32_t seed)
    : desktop(host), books(account), chance(seed) {}

bool SoakReceiver::Happens(double every, double within) {
    return std::bernoulli_distribution(within / every)(chance);
}

double SoakReceiver::Between(double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(chance);
}

void SoakReceiver::Attach() {
    desktop.tcpSockets.at(0)->onConnect = [this] { AnswerAudio(); };
    desktop.tcpSockets.at(1)->onConnect = [this] { AnswerWaterfall(); };
}

bool SoakReceiver::IsSteady() const {
    return desktop.tcpSockets.at(0)->IsConnected() && desktop.tcpSockets.at(1)->IsConnected() &&
           desktop.UtcNow() > lastConnect + 5;
}

// A reply with as many headers as a gateway adds.
void SoakReceiver::Upgrade(VirtualTCPSocket& socket) {
    socket.TakeSent();
    socket.Deliver("HTTP/1.1 101 Switching Protocols\r\nSet-Cookie: " + std::string(3000, 'c') +
                   "\r\n\r\n");
}

void SoakReceiver::AnswerAudio() {
    VirtualTCPSocket& socket = *desktop.tcpSockets.at(0);
    books.LinkGone();
    audioLife = std::make_shared<int>(0);
    if (desktop.UtcNow() < goneUntil) {
        socket.Fail();
        return;
    }
    ++connects;
    lastConnect = desktop.UtcNow();
    socket.Accept();
    desktop.queue.After(Latency, [this, &socket, life = Life(audioLife)] {
        if (!life.expired()) {
            Upgrade(socket);
            desktop.queue.After(Latency, [this, life] {
                if (!life.expired()) {
                    Greet();
                }
            });
        }
    });
}

void SoakReceiver::Greet() {
    const VirtualReceiver link(*desktop.tcpSockets.at(0));
    if (Happens(10, 1)) {
        link.Message(" too_busy=4");
        return;
    }
    link.Message(" audio_init=0");
    link.Message(" audio_rate=" + Str(Rate));
    SendFrame(audioLife);
}

void SoakReceiver::AnswerWaterfall() {
    VirtualTCPSocket& socket = *desktop.tcpSockets.at(1);
    waterfallLife = std::make_shared<int>(0);
    if (desktop.UtcNow() < goneUntil) {
        socket.Fail();
        return;
    }
    socket.Accept();
    desktop.queue.After(Latency, [this, &socket, life = Life(waterfallLife)] {
        if (!life.expired()) {
            Upgrade(socket);
            SendRow(life);
        }
    });
}

void SoakReceiver::SendRow(const Life& life) {
    desktop.queue.After(RowPeriod, [this, life] {
        VirtualTCPSocket& socket = *desktop.tcpSockets.at(1);
        if (life.expired() || !socket.IsConnected()) {
            return;
        }
        socket.TakeSent();
        socket.Deliver(row);
        ++rows;
        if (Happens(CutWaterfall, RowPeriod)) {
            socket.Fail();
        }
        SendRow(life);
    });
}

Piece SoakReceiver::NextFrame() {
    if (desktop.UtcNow() >= stretchEnd) {
        isQuiet = !isQuiet;
        stretchEnd = desktop.UtcNow() + Between(0.5, isQuiet ? 12 : 20);
    }
    ++frames;
    ++sequence;
    return books.Send(Whole(ShortestFrame, LongestFrame), isQuiet);
}

void SoakReceiver::SendFrame(const Life& life) {
    VirtualTCPSocket& socket = *desktop.tcpSockets.at(0);
    if (life.expired() || !socket.IsConnected()) {
        return;
    }
    socket.TakeSent();
    const Piece frame = NextFrame();
    double pause = static_cast<double>(frame.samples) / Rate;
    if (Happens(CutAudio, pause)) {
        Cut(frame);
        return;
    }
    SendOrLose(frame);
    if (Happens(SilentSpell, pause)) {
        pause = Between(2, 40);
    }
    desktop.queue.After(pause, [this, life] { SendFrame(life); });
}

void SoakReceiver::SendOrLose(const Piece& frame) {
    const double lasts = static_cast<double>(frame.samples) / Rate;
    if (Happens(BurstOfLosses, lasts)) {
        lossesToCome = Whole(1, 40);
    } else if (lossesToCome == 0 && Happens(SingleLoss, lasts)) {
        lossesToCome = 1;
    }
    if (lossesToCome > 0) {
        --lossesToCome;
        books.Lose(frame);
        return;
    }
    WriteSoundFrame(wire, frame, sequence);
    books.Travel(frame);
    desktop.tcpSockets.at(0)->Deliver(wire);
}

// The link breaks with part of a frame on it; half of the time the receiver stays away.
void SoakReceiver::Cut(const Piece& frame) {
    ++cuts;
    books.Lose(frame);
    WriteSoundFrame(wire, frame, sequence);
    VirtualTCPSocket& socket = *desktop.tcpSockets.at(0);
    socket.Deliver(std::string_view(wire).substr(0, Whole(0, static_cast<double>(wire.size()))));
    socket.Fail();
    if (Happens(2, 1)) {
        goneUntil = desktop.UtcNow() + Between(60, 200);
        desktop.tcpSockets.at(1)->Fail();
    }
}

} // namespace larkspool::soak
