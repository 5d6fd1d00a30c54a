#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// Cuts the bytes that a rig control peer sends into lines. A line ends at an LF or a CR; CR LF
// gives an additional empty line. Never holds more than the longest line.
class RigLines {
  public:
    static constexpr std::size_t Longest = 256; // bytes, without the line end

    std::size_t Room() const { return Longest + 1 - held.size(); }
    void Add(std::string_view bytes); // at most Room() bytes
    std::optional<std::string> Take();

    // No room is left and no line has ended: the line is too long.
    bool IsTooLong() const {
        return Room() == 0 && held.find_first_of(LineEnds) == std::string::npos;
    }

  private:
    static constexpr std::string_view LineEnds = "\r\n";

    std::string held;
};

} // namespace larkspool
