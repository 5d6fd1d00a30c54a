#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace larkspool::fuzz {

// The fuzzer's bytes, taken from the front. Behind the end there are zeros and empty pieces.
class Input {
  public:
    explicit Input(std::string_view bytes) : rest(bytes) {}

    bool Empty() const { return rest.empty(); }
    std::string_view Piece(std::size_t count) {
        const std::string_view piece = rest.substr(0, count);
        rest.remove_prefix(piece.size());
        return piece;
    }
    std::uint8_t Byte() {
        const std::string_view byte = Piece(1);
        return byte.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(byte[0]);
    }
    std::string_view CountedPiece() { return Piece(Byte()); } // one byte of length in front
    std::string_view Rest() { return Piece(rest.size()); }

  private:
    std::string_view rest;
};

// What must hold whatever the input is. Says so and ends the process where it doesn't.
inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "This doesn't hold: %s\n", what);
        std::abort();
    }
}

} // namespace larkspool::fuzz
