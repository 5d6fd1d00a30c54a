#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// What a program can ask by rig control.
enum class RigVerb {
    GetFrequency,
    SetFrequency, // number: Hz
    GetMode,
    SetMode, // word: the mode's name; number: the passband's width in Hz, none if not given
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
    NotAvailable, // the console has no such thing
    Unreadable    // no command, or its arguments are missing or wrong
};

struct RigCommand {
    RigVerb verb = RigVerb::Unreadable;
    std::string_view name = {}; // the long form, of static storage; empty if unknown
    std::string arguments = {}; // as written, one blank between them
    std::string word = {};
    std::optional<double> number = {}; // finite
    char separator = '\0';             // between the parts of an extended answer; 0: a plain one

    bool operator==(const RigCommand&) const = default;
};

// Takes the next command off the front of a line. Empty if only blanks are left. Behind a command
// that is unknown or unreadable the rest of the line means nothing and is dropped.
std::optional<RigCommand> TakeRigCommand(std::string_view& line);

} // namespace larkspool
