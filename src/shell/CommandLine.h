#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace larkspool {

// What the program is to do with the arguments it was started with, the program's own name and the
// desktop's options left out.
struct CommandLine {
    bool enable = false;            // the schedules that are opened
    std::vector<std::string> files; // schedules, each for a window of its own
    std::string complaint;          // empty unless something can't be understood
};
CommandLine ReadCommandLine(std::span<const std::string> arguments);

// What "--help" or "--version" prints. Nothing if neither is among the arguments; the desktop's
// options may still be.
std::optional<std::string> TextAskedFor(std::span<const std::string> arguments);

} // namespace larkspool
