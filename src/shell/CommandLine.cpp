#include "shell/CommandLine.h"

#include "shell/Version.h"

#include <string_view>

namespace larkspool {

namespace {

constexpr std::string_view EndOfOptions = "--"; // everything after it is a file

constexpr std::string_view Help =
    "Usage: larkspool [--enable] [FILE...]\n"
    "Listens to networked shortwave receivers, and records them by schedules.\n"
    "Each FILE is a saved schedule, and opens in a window of its own.\n"
    "\n"
    "  --enable   enable the schedules, so that their entries are recorded\n"
    "  --help     print this text and exit\n"
    "  --version  print the version and exit\n";

} // namespace

CommandLine ReadCommandLine(std::span<const std::string> arguments) {
    CommandLine read;
    bool onlyFiles = false;
    for (const std::string& argument : arguments) {
        if (onlyFiles || !argument.starts_with('-')) {
            if (!argument.empty()) {
                read.files.push_back(argument);
            }
        } else if (argument == EndOfOptions) {
            onlyFiles = true;
        } else if (argument == "--enable") {
            read.enable = true;
        } else if (read.complaint.empty()) {
            read.complaint = "larkspool: unknown option " + argument + "\nTry: larkspool --help\n";
        }
    }
    return read;
}

std::optional<std::string> TextAskedFor(std::span<const std::string> arguments) {
    for (const std::string& argument : arguments) {
        if (argument == EndOfOptions) {
            break;
        }
        if (argument == "--help") {
            return std::string(Help);
        }
        if (argument == "--version") {
            return std::string("Larkspool ") + version::Short + "\n";
        }
    }
    return std::nullopt;
}

} // namespace larkspool
