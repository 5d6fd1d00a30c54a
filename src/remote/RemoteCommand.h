#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// What a program on the network can ask of the console.
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
    std::string text = {}; // for the field that is set; a frequency is in kHz
    int row = 0;           // of the mode popup

    bool operator==(const RemoteCommand&) const = default;
};

// What a datagram says: without the two digits that may stand in front and without its line end.
std::string RemoteLine(std::string_view datagram);

// Nothing for a line that asks for nothing that is known. Words count in exact case.
std::optional<RemoteCommand> ParseRemoteCommand(std::string_view line);

} // namespace larkspool
