#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace larkspool::demo {

// What the command line says. Port 0 lets the system pick one.
struct Options {
    std::array<std::uint16_t, 7> ports{8073, 8074, 8075, 8076, 8077, 8078, 8079};
    std::uint16_t httpPort = 8080;
    std::string bindAddress = "127.0.0.1";
    double rate = 12000.0;       // samples per second, as clients are informed
    double jitterSeconds = 0.0;  // frames are late by a random time up to this
    double dropAfterSeconds = 0; // a link is closed this long after its upgrade; 0: never
    bool busy = false;           // clients get the answer that all places are taken
    std::uint64_t seed = 1;
    std::string newest; // the version to offer; empty: there is no newer one
    bool quiet = false;
    bool help = false;
};

// The options, or what is wrong with the arguments, which don't include the program's name.
std::variant<Options, std::string> ParseOptions(std::span<const char* const> arguments);

std::string_view HelpText();

} // namespace larkspool::demo
