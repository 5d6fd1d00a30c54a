// Any bytes as what a peer of rig control sends, in pieces of any size: lines are bounded, each
// command has what its verb needs, an edge of a passband is a number, and answers are lines.
#include "Input.h"
#include "remote/RigLines.h"
#include "remote/RigMode.h"
#include "remote/RigReply.h"

#include <cmath>

namespace larkspool::fuzz {
namespace {

void CheckNumber(const RigCommand& command) {
    const RigVerb verb = command.verb;
    const bool needsNumber = verb == RigVerb::SetFrequency || verb == RigVerb::SetLevel ||
                             verb == RigVerb::SetFunction || verb == RigVerb::SetSplit;
    Require(command.number || !needsNumber, "what is set has a number");
    Require(std::isfinite(command.number.value_or(0)), "a number is finite");
    if (verb != RigVerb::SetMode) {
        return;
    }
    if (const auto row = RigModeRow(command.word)) {
        const RigPassband edges = RigEdges(*row, {-2700, -100}, command.number.value_or(0));
        Require(std::isfinite(edges.low) && std::isfinite(edges.high), "an edge is a number");
        Require(!RigModeName(*row).empty(), "a mode has a name");
    }
}

void CheckLine(std::string_view line) {
    Require(line.size() <= RigLines::Longest, "a line is short");
    while (!line.empty()) {
        const std::size_t before = line.size();
        const auto command = TakeRigCommand(line);
        Require(line.size() < before, "a command takes something");
        if (!command) {
            return;
        }
        CheckNumber(*command);
        const std::string answer = RigReplyText(*command, ReplyWithoutConsole(*command));
        Require(answer.size() < 2000 && answer.ends_with('\n'), "an answer is a line or some");
    }
}

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    fuzz::Input input(data, size);
    const std::size_t piece = std::size_t{input.Byte()} + 1;
    RigLines lines;
    while (!input.Empty() && !lines.IsTooLong()) {
        const auto line = lines.Take();
        if (line) {
            fuzz::CheckLine(*line);
        } else {
            fuzz::Require(lines.Room() > 0, "there is room for more");
            lines.Add(input.Piece(std::min(piece, lines.Room())));
        }
    }
    while (const auto line = lines.Take()) {
        fuzz::CheckLine(*line);
    }
    return 0;
}
