#include "support/VirtualReceiver.h"

#include <stdexcept>

namespace larkspool {

namespace {

std::string BigEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xFFU);
    }
    return text;
}

} // namespace

std::string ServerFrame(std::string_view payload, unsigned opcode) {
    std::string frame(1, static_cast<char>(0x80U | opcode));
    if (payload.size() <= 125) {
        frame += BigEndian(payload.size(), 1);
    } else if (payload.size() <= 0xFFFF) {
        frame += BigEndian(126, 1) + BigEndian(payload.size(), 2);
    } else {
        frame += BigEndian(127, 1) + BigEndian(payload.size(), 8);
    }
    return frame + std::string(payload);
}

std::string SoundBody(std::uint32_t sequence, const std::vector<std::int16_t>& samples,
                      std::uint16_t rawMeter, std::uint8_t flags) {
    std::string body(1, static_cast<char>(flags));
    for (unsigned shift = 0; shift < 32; shift += 8) { // little-endian
        body += static_cast<char>(sequence >> shift & 0xFFU);
    }
    body += BigEndian(rawMeter, 2);
    for (const std::int16_t sample : samples) {
        const auto bits = static_cast<std::uint16_t>(sample);
        body += static_cast<char>(bits >> 8U);
        body += static_cast<char>(bits & 0xFFU);
    }
    return body;
}

std::vector<std::string> CommandsIn(std::string_view written) {
    std::vector<std::string> commands;
    while (!written.empty()) {
        const auto byte = [written](std::size_t i) {
            return static_cast<std::uint8_t>(written.at(i));
        };
        const std::size_t length = byte(1) & 0x7FU;
        if ((byte(1) & 0x80U) == 0 || length > 125 || written.size() < length + 6) {
            throw std::runtime_error("not a client's frame");
        }
        std::string text;
        for (std::size_t i = 0; i < length; ++i) {
            text += static_cast<char>(byte(6 + i) ^ byte(2 + i % 4));
        }
        commands.push_back(byte(0) == 0x8A ? "PONG " + text : text);
        written.remove_prefix(length + 6);
    }
    return commands;
}

} // namespace larkspool
