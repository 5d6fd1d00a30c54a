#include "demo/WebSocketFrame.h"

#include <utility>

namespace larkspool::demo {
namespace {

constexpr std::uint8_t FinalBit = 0x80;
constexpr std::uint8_t MaskBit = 0x80;
constexpr std::size_t MaskSize = 4;

bool IsControl(Opcode opcode) { return static_cast<std::uint8_t>(opcode) >= 8; }

} // namespace

void FrameReader::Add(std::span<const std::uint8_t> bytes) {
    buffer.erase(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(consumed));
    consumed = 0;
    if (!failed) {
        buffer.insert(buffer.end(), bytes.begin(), bytes.end());
    }
}

std::optional<FrameReader::Header> FrameReader::ReadHeader() const {
    const auto bytes = std::span(buffer).subspan(consumed);
    if (bytes.size() < 2) {
        return std::nullopt;
    }
    Header header;
    header.first = bytes[0];
    header.masked = (bytes[1] & MaskBit) != 0;
    header.length = bytes[1] & 0x7F;
    std::size_t extra = 0;
    if (header.length == 126) {
        extra = 2;
    } else if (header.length == 127) {
        extra = 8;
    }
    header.size = 2 + extra + (header.masked ? MaskSize : 0);
    if (bytes.size() < header.size) {
        return std::nullopt;
    }
    if (extra > 0) {
        header.length = 0;
    }
    for (std::size_t i = 0; i < extra; ++i) {
        header.length = header.length << 8 | bytes[2 + i];
    }
    return header;
}

std::string FrameReader::TakePayload(const Header& header) {
    const auto bytes = std::span(buffer).subspan(consumed);
    const auto length = static_cast<std::size_t>(header.length);
    std::string payload(length, '\0');
    for (std::size_t i = 0; i < length; ++i) {
        const std::uint8_t key =
            header.masked ? bytes[header.size - MaskSize + i % MaskSize] : std::uint8_t{0};
        payload[i] = static_cast<char>(bytes[header.size + i] ^ key);
    }
    consumed += header.size + length;
    return payload;
}

std::optional<Incoming> FrameReader::Assemble(const Header& header, std::string payload) {
    const auto opcode = static_cast<Opcode>(header.first & 0x0F);
    if (IsControl(opcode)) {
        return Incoming{opcode, std::move(payload)};
    }
    const bool continues = opcode == Opcode::Continuation;
    if (continues != unfinishedOpcode.has_value() || unfinished.size() + payload.size() > Largest) {
        failed = true;
        return std::nullopt;
    }
    if (!continues) {
        unfinishedOpcode = opcode;
    }
    unfinished += payload;
    if ((header.first & FinalBit) == 0) {
        return std::nullopt;
    }
    Incoming whole{*unfinishedOpcode, std::exchange(unfinished, {})};
    unfinishedOpcode.reset();
    return whole;
}

std::optional<Incoming> FrameReader::Next() {
    while (!failed) {
        const auto header = ReadHeader();
        if (!header) {
            return std::nullopt;
        }
        if (header->length > Largest) {
            failed = true;
            return std::nullopt;
        }
        if (buffer.size() - consumed < header->size + header->length) {
            return std::nullopt;
        }
        if (auto whole = Assemble(*header, TakePayload(*header))) {
            return whole;
        }
    }
    return std::nullopt;
}

std::vector<std::uint8_t> EncodeFrame(Opcode opcode, std::span<const std::uint8_t> payload) {
    std::vector<std::uint8_t> frame{
        static_cast<std::uint8_t>(FinalBit | static_cast<std::uint8_t>(opcode))};
    frame.reserve(payload.size() + 10);
    std::size_t extra = 0;
    if (payload.size() < 126) {
        frame.push_back(static_cast<std::uint8_t>(payload.size()));
    } else {
        extra = payload.size() < 65536 ? 2 : 8;
        frame.push_back(extra == 2 ? 126 : 127);
    }
    while (extra-- > 0) {
        frame.push_back(static_cast<std::uint8_t>(payload.size() >> (8 * extra) & 0xFF));
    }
    frame.insert(frame.end(), payload.begin(), payload.end());
    return frame;
}

} // namespace larkspool::demo
