#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace larkspool::demo {

enum class Opcode : std::uint8_t {
    Continuation = 0,
    Text = 1,
    Binary = 2,
    Close = 8,
    Ping = 9,
    Pong = 10
};

// A whole message from a client, or one of its control frames.
struct Incoming {
    Opcode opcode = Opcode::Binary;
    std::string payload;
};

// Puts a client's frames back together from pieces of any size. Holds at most one frame and one
// unfinished message of 16 KiB.
class FrameReader {
  public:
    static constexpr std::size_t Largest = 16384;

    void Add(std::span<const std::uint8_t> bytes);

    // The next message that is there whole.
    std::optional<Incoming> Next();

    // The client broke the rules or sent too much; nothing more comes out.
    bool HasFailed() const { return failed; }

  private:
    struct Header {
        std::uint8_t first = 0;
        bool masked = false;
        std::size_t size = 0; // of the header itself
        std::uint64_t length = 0;
    };

    std::optional<Header> ReadHeader() const;
    std::string TakePayload(const Header& header);
    std::optional<Incoming> Assemble(const Header& header, std::string payload);

    std::vector<std::uint8_t> buffer;
    std::size_t consumed = 0;
    std::string unfinished;
    std::optional<Opcode> unfinishedOpcode;
    bool failed = false;
};

// One unmasked frame, as a server sends it.
std::vector<std::uint8_t> EncodeFrame(Opcode opcode, std::span<const std::uint8_t> payload);

} // namespace larkspool::demo
