#include "remote/RigLines.h"

namespace larkspool {

void RigLines::Add(std::string_view bytes) { held.append(bytes.substr(0, Room())); }

std::optional<std::string> RigLines::Take() {
    const std::size_t end = held.find_first_of(LineEnds);
    if (end == std::string::npos) {
        return std::nullopt;
    }
    std::string line = held.substr(0, end);
    held.erase(0, end + 1);
    return line;
}

} // namespace larkspool
