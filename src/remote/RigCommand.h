#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// The commands of rig control.
enum class RigVerb {
    GetFrequency,
    SetFrequency, // number: Hz
    GetMode,
    SetMode, // word: the mode's name; number: the passband's width in Hz, empty if not given
    GetVfo,
    SetVfo, // word
    GetSplit,
    SetSplit,    // number: 0 is off
    GetLevel,    // word
    SetLevel,    // word, number
    GetFunction, // word
    SetFunction, // word, number
    StartRecording,
    StopRecording,
    GetPowerState,
    GetLockMode,
    CheckVfo,
    DumpState,
    GetInfo,
    GetRigInfo,
    Quit,
    NotAvailable, // the console has no such function
    Unreadable    // no command, or its arguments are missing or wrong
};

struct RigCommand {
    RigVerb verb = RigVerb::Unreadable;
    std::string_view name = {}; // the long form, in static storage; empty if unknown
    std::string arguments = {}; // as written, one blank between them
    std::string word = {};
    std::optional<double> number = {}; // finite
    char separator = '\0';             // between the parts of an extended answer; 0: a plain answer

    bool operator==(const RigCommand&) const = default;
};

// Removes the next command from the front of a line. Empty if only blanks are left. After an
// unknown or unreadable command the rest of the line is dropped.
std::optional<RigCommand> TakeRigCommand(std::string_view& line);

} // namespace larkspool
