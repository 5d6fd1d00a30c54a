#pragma once

#include "support/VirtualSockets.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

// A WebSocket frame as a receiver sends it: final, binary, unmasked.
std::string ServerFrame(std::string_view payload, unsigned opcode = 2);

// An audio frame's payload behind its tag. Samples go out big-endian.
std::string SoundBody(std::uint32_t sequence, const std::vector<std::int16_t>& samples,
                      std::uint16_t rawMeter = 0, std::uint8_t flags = 0);

// The text commands in what a client has written: unmasked, one a frame. Pongs come as "PONG " and
// their payload.
std::vector<std::string> CommandsIn(std::string_view written);

// A receiver's end of one link.
class VirtualReceiver {
  public:
    explicit VirtualReceiver(VirtualTCPSocket& link) : socket(link) {}

    void Upgrade() const { socket.Deliver("HTTP/1.1 101 Switching Protocols\r\n\r\n"); }
    void Say(std::string_view tag, std::string_view body) const {
        socket.Deliver(ServerFrame(std::string(tag) + std::string(body)));
    }
    void Message(std::string_view body) const { Say("MSG", body); }
    void Sound(std::uint32_t sequence, const std::vector<std::int16_t>& samples,
               std::uint16_t rawMeter = 0, std::uint8_t flags = 0) const {
        Say("SND", SoundBody(sequence, samples, rawMeter, flags));
    }

    std::string TakeRequest() const { return socket.TakeSent(); }
    std::vector<std::string> TakeCommands() const { return CommandsIn(socket.TakeSent()); }

    VirtualTCPSocket& socket;
};

} // namespace larkspool
