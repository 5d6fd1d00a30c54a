#include "demo/Options.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <optional>

namespace larkspool::demo {
namespace {

template <typename Value>
bool ReadNumber(std::string_view text, Value lowest, Value highest, Value& out) {
    Value value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !(value >= lowest) ||
        !(value <= highest)) {
        return false;
    }
    out = value;
    return true;
}

bool ReadPort(std::string_view text, std::uint16_t& port) {
    return ReadNumber<std::uint16_t>(text, 0, 65535, port);
}

// "8073" means that port and the six behind it, "8073-8079" says so in full, "1,2,3,4,5,6,7" names
// each; 0 alone lets the system pick all.
bool ReadPorts(std::string_view text, Options& options) {
    auto& ports = options.ports;
    if (text.find(',') != std::string_view::npos) {
        for (std::size_t i = 0; i < ports.size(); ++i) {
            const std::size_t comma = std::min(text.find(','), text.size());
            const bool last = i + 1 == ports.size();
            if (!ReadPort(text.substr(0, comma), ports[i]) || last != (comma == text.size())) {
                return false;
            }
            text.remove_prefix(last ? comma : comma + 1);
        }
        return true;
    }
    const std::size_t dash = std::min(text.find('-'), text.size());
    std::uint16_t first = 0;
    if (!ReadPort(text.substr(0, dash), first) || first > 65535 - ports.size() + 1) {
        return false;
    }
    std::uint16_t last = 0;
    if (dash < text.size() && (!ReadPort(text.substr(dash + 1), last) || first == 0 ||
                               last != first + ports.size() - 1)) {
        return false;
    }
    for (std::size_t i = 0; i < ports.size(); ++i) {
        ports[i] = static_cast<std::uint16_t>(first == 0 ? 0 : first + i);
    }
    return true;
}

bool ReadVersion(std::string_view text, std::string& version) {
    if (text.empty() || text.size() > 20 ||
        text.find_first_not_of("0123456789.") != std::string_view::npos) {
        return false;
    }
    version = text;
    return true;
}

bool ReadMilliseconds(std::string_view text, double& seconds) {
    double milliseconds = 0.0;
    if (!ReadNumber(text, 0.0, 60000.0, milliseconds)) {
        return false;
    }
    seconds = milliseconds / 1000.0;
    return true;
}

struct Setter {
    std::string_view expects;
    std::function<bool(std::string_view, Options&)> set;
};

const std::map<std::string_view, Setter>& Setters() {
    static const std::map<std::string_view, Setter> setters{
        {"--ports",
         {"FIRST, FIRST-LAST (seven ports), seven ports with commas between, or 0", ReadPorts}},
        {"--http-port",
         {"a port from 0 to 65535",
          [](auto text, Options& options) { return ReadPort(text, options.httpPort); }}},
        {"--bind",
         {"an address",
          [](auto text, Options& options) {
              options.bindAddress = text;
              return !text.empty();
          }}},
        {"--rate",
         {"samples a second from 8000 to 48000",
          [](auto text, Options& options) {
              return ReadNumber(text, 8000.0, 48000.0, options.rate);
          }}},
        {"--jitter-ms",
         {"milliseconds from 0 to 60000",
          [](auto text, Options& options) {
              return ReadMilliseconds(text, options.jitterSeconds);
          }}},
        {"--drop-after",
         {"seconds from 0 to 1000000",
          [](auto text, Options& options) {
              return ReadNumber(text, 0.0, 1.0e6, options.dropAfterSeconds);
          }}},
        {"--seed",
         {"a whole number",
          [](auto text, Options& options) {
              return ReadNumber<std::uint64_t>(text, 0, UINT64_MAX, options.seed);
          }}},
        {"--newest",
         {"a version such as 1.4.0",
          [](auto text, Options& options) { return ReadVersion(text, options.newest); }}},
    };
    return setters;
}

bool SetFlag(std::string_view argument, Options& options) {
    if (argument == "--busy") {
        options.busy = true;
    } else if (argument == "--quiet") {
        options.quiet = true;
    } else if (argument == "--help" || argument == "-h") {
        options.help = true;
    } else {
        return false;
    }
    return true;
}

} // namespace

std::variant<Options, std::string> ParseOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string_view argument = arguments[i];
        if (SetFlag(argument, options)) {
            continue;
        }
        std::optional<std::string_view> value;
        if (const std::size_t equals = argument.find('='); equals != std::string_view::npos) {
            value = argument.substr(equals + 1);
            argument = argument.substr(0, equals);
        }
        const auto found = Setters().find(argument);
        if (found == Setters().end()) {
            return "unknown option " + std::string(argument);
        }
        if (!value && i + 1 < arguments.size()) {
            value = arguments[++i];
        }
        if (!value || !found->second.set(*value, options)) {
            return std::string(argument) + " takes " + std::string(found->second.expects);
        }
    }
    return options;
}

std::string_view HelpText() {
    return R"(Usage: larkspool-demo [options]

Seven demo receivers and a small web server on this computer.

  --ports FIRST[-LAST]  ports of the receivers, seven in a row (8073-8079);
                        or seven with commas between; 0: the system picks
  --http-port PORT      port of the web server (8080); 0: the system picks
  --bind ADDRESS        address to listen on (127.0.0.1)
  --rate RATE           audio samples a second (12000), for example 12000.9
  --jitter-ms MS        delay each frame by a random time up to MS
  --drop-after SECONDS  cut every link so long after it was opened
  --busy                tell every client that all places are taken
  --seed NUMBER         another noise, other lightning (1)
  --newest VERSION      the version that the update check offers
  --quiet               print nothing but errors
  --help                print this
)";
}

} // namespace larkspool::demo
