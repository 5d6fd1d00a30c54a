#pragma once

#include "support/VirtualSockets.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

inline std::string BigEndian(std::uint64_t value, int bytes) {
    std::string text;
    while (bytes-- > 0) {
        text += static_cast<char>(value >> static_cast<unsigned>(8 * bytes) & 0xFFU);
    }
    return text;
}

// A WebSocket frame as a receiver sends it: final, binary, unmasked.
inline std::string ServerFrame(std::string_view payload, unsigned opcode = 2) {
    const int extra = payload.size() <= 125 ? 0 : payload.size() <= 0xFFFF ? 2 : 8;
    const std::size_t length = extra == 0 ? payload.size() : extra == 2 ? 126 : 127;
    return BigEndian(0x80U | opcode, 1) + BigEndian(length, 1) + BigEndian(payload.size(), extra) +
           std::string(payload);
}

// An audio frame's payload behind its tag. The sequence number is little-endian, samples are
// big-endian.
inline std::string SoundBody(std::uint32_t sequence, const std::vector<std::int16_t>& samples,
                             std::uint16_t rawMeter = 0, std::uint8_t flags = 0) {
    const std::string number = BigEndian(sequence, 4);
    std::string body =
        BigEndian(flags, 1) + std::string(number.rbegin(), number.rend()) + BigEndian(rawMeter, 2);
    for (const std::int16_t sample : samples) {
        body += static_cast<char>(sample >> 8);
        body += static_cast<char>(sample & 0xFF);
    }
    return body;
}

// The text commands in what a client has written: unmasked, one a frame. Pongs come as "PONG " and
// their payload.
inline std::vector<std::string> CommandsIn(std::string_view written) {
    std::vector<std::string> commands;
    while (!written.empty()) {
        const auto byte = [written](std::size_t i) {
            return static_cast<std::uint8_t>(written.at(i));
        };
        const std::size_t length = byte(1) & 0x7FU;
        if ((byte(1) & 0x80U) == 0 || length > 125 || written.size() < length + 6) {
            throw std::runtime_error("not a client's frame");
        }
        std::string text = byte(0) == 0x8A ? "PONG " : "";
        for (std::size_t i = 0; i < length; ++i) {
            text += static_cast<char>(byte(6 + i) ^ byte(2 + i % 4));
        }
        commands.push_back(text);
        written.remove_prefix(length + 6);
    }
    return commands;
}

// A receiver's end of one link.
class VirtualReceiver {
  public:
    explicit VirtualReceiver(VirtualTCPSocket& link) : socket(link) {}

    void Upgrade(const std::string& headers = {}) const {
        socket.Deliver("HTTP/1.1 101 Switching Protocols\r\n" + headers + "\r\n");
    }
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
