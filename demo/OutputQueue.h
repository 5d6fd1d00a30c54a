#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace larkspool::demo {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

inline Clock::duration Seconds(double seconds) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

// What waits to be written to one client, in order. Each piece may be delayed until a time; it then
// delays all that follow.
class OutputQueue {
  public:
    void Push(std::vector<std::uint8_t> bytes, TimePoint notBefore = {});

    // The bytes of the first piece that can be sent now; empty if none can.
    std::span<const std::uint8_t> Ready(TimePoint now) const;

    // The first count bytes of the last piece are sent.
    void Consume(std::size_t count);

    // When the first piece may be sent; empty if the queue is empty.
    std::optional<TimePoint> NextTime() const;

    bool IsEmpty() const { return pieces.empty(); }
    std::size_t Pieces() const { return pieces.size(); }

  private:
    struct Piece {
        std::vector<std::uint8_t> bytes;
        TimePoint notBefore;
    };

    std::deque<Piece> pieces;
    std::size_t written = 0; // of the first piece
};

} // namespace larkspool::demo
