#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// Cuts the bytes of a rig control's peer into lines. A line ends at an LF or a CR; where there are
// both, an empty line follows. Holds no more than the longest line, whatever comes in.
class RigLines {
  public:
    static constexpr std::size_t Longest = 256; // bytes, without the line end

    std::size_t Room() const { return Longest + 1 - held.size(); }
    void Add(std::string_view bytes); // at most Room() bytes
    std::optional<std::string> Take();

    // Without a whole line there is no room either: the line that has begun is too long.
    bool IsTooLong() const {
        return Room() == 0 && held.find_first_of(LineEnds) == std::string::npos;
    }

  private:
    static constexpr std::string_view LineEnds = "\r\n";

    std::string held;
};

} // namespace larkspool
