#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace larkspool {

// What the arguments ask the program to do. They come without the program's own name and without
// the desktop's options.
struct CommandLine {
    bool enable = false;            // enable the schedules that are opened
    std::vector<std::string> files; // schedules, each for its own window
    std::string complaint;          // empty unless an argument is unknown
};
CommandLine ReadCommandLine(std::span<const std::string> arguments);

// What "--help" or "--version" prints. Empty if neither is among the arguments, which may still
// contain the desktop's options.
std::optional<std::string> TextAskedFor(std::span<const std::string> arguments);

} // namespace larkspool
