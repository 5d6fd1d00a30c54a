#include "remote/RemoteCommand.h"

#include "platform/Text.h"

#include <array>
#include <cstdint>

namespace larkspool {

namespace {

using Read = std::optional<RemoteCommand> (*)(std::string_view argument);

constexpr std::size_t PrefixLength = 2;
constexpr std::size_t LongestPrefixed = 100; // bytes that are used after a prefix
constexpr std::size_t LongestNumber = 100;   // bytes that are examined for a number

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

void RemoveFirst(std::string& text, char unwanted) {
    if (const std::size_t found = text.find(unwanted); found != std::string::npos) {
        text.erase(found, 1);
    }
}

double Number(std::string_view argument) { return Val(argument.substr(0, LongestNumber)); }

template <RemoteVerb Verb>
std::optional<RemoteCommand> Alone(std::string_view) {
    return RemoteCommand{Verb};
}

template <RemoteVerb Verb>
std::optional<RemoteCommand> WithText(std::string_view argument) {
    return RemoteCommand{Verb, std::string(argument)};
}

std::optional<RemoteCommand> Streaming(std::string_view argument) {
    const bool wanted = WholePart(Number(argument)) == 1;
    return RemoteCommand{wanted ? RemoteVerb::StartStreaming : RemoteVerb::EndStreaming};
}

std::optional<RemoteCommand> Frequency(std::string_view argument) {
    constexpr double HertzPerKilohertz = 1000.0;
    return RemoteCommand{RemoteVerb::SetFrequency, Str(Number(argument) / HertzPerKilohertz)};
}

// Peers use their own numbers for the modes, from 0: AM, SAM, FM, USB, LSB, CW, CW reversed, narrow
// FM.
std::optional<RemoteCommand> Mode(std::string_view argument) {
    constexpr std::array Rows = {0, 9, 6, 3, 2, 4, 4, 6};
    const std::int64_t code = WholePart(Number(argument));
    if (code < 0 || code >= static_cast<std::int64_t>(Rows.size())) {
        return std::nullopt;
    }
    return RemoteCommand{RemoteVerb::SelectMode, "", Rows[static_cast<std::size_t>(code)]};
}

struct Word {
    std::string_view text;
    Read read;
};

// No word begins with another one, so at most one matches.
constexpr std::array Words = {
    Word{"vrxct:", Alone<RemoteVerb::TellReceivers>},
    Word{"staud:", Streaming},
    Word{"ofreq:", Frequency},
    Word{"mode:", Mode},
    Word{"togglerecord", Alone<RemoteVerb::ToggleRecording>},
    Word{"connect", Alone<RemoteVerb::Connect>},
    Word{"disconnect", Alone<RemoteVerb::Disconnect>},
    Word{"address:", WithText<RemoteVerb::SetAddress>},
    Word{"highcut:", WithText<RemoteVerb::SetHighCut>},
    Word{"lowcut:", WithText<RemoteVerb::SetLowCut>},
};

} // namespace

std::string RemoteLine(std::string_view datagram) {
    if (datagram.size() >= PrefixLength && IsDigit(datagram[0]) && IsDigit(datagram[1])) {
        datagram = datagram.substr(PrefixLength, LongestPrefixed);
    }
    std::string line(datagram);
    RemoveFirst(line, '\n');
    RemoveFirst(line, '\r');
    return line;
}

std::optional<RemoteCommand> ParseRemoteCommand(std::string_view line) {
    for (const Word& word : Words) {
        if (line.starts_with(word.text)) {
            return word.read(line.substr(word.text.size()));
        }
    }
    return std::nullopt;
}

} // namespace larkspool
