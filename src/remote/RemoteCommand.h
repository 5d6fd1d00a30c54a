#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// The commands that a program on the network can send to the console.
enum class RemoteVerb {
    TellReceivers,
    StartStreaming,
    EndStreaming,
    SetFrequency,
    SelectMode,
    ToggleRecording,
    Connect,
    Disconnect,
    SetAddress,
    SetHighCut,
    SetLowCut
};

struct RemoteCommand {
    RemoteVerb verb;
    std::string text = {}; // for the field to set; a frequency is in kHz
    int row = 0;           // of the mode popup

    bool operator==(const RemoteCommand&) const = default;
};

// The text of a datagram, without its line end and without the two digits that it may begin with.
std::string RemoteLine(std::string_view datagram);

// Empty unless the line is a known command. Upper and lower case differ.
std::optional<RemoteCommand> ParseRemoteCommand(std::string_view line);

} // namespace larkspool
