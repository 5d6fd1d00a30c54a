#pragma once

#include "remote/RigCommand.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

// The result of a rig control command.
struct RigReply {
    // The protocol's numbers.
    enum class Code { Done = 0, Invalid = -1, Rejected = -9, NotAvailable = -11 };
    struct Value {
        std::string_view label; // in the extended answer; empty: no label
        std::string text;
    };

    Code code = Code::Done;
    std::vector<Value> values = {}; // what was asked for; empty after a set command
};

// The bytes to send. Each line of a plain answer ends in an LF. Each part of an extended answer
// ends in the command's separator, the last part in an LF.
std::string RigReplyText(const RigCommand& command, const RigReply& reply);

inline constexpr std::string_view OnlyRigVfo = "VFOA";

// The reply to a command that does not depend on the console's state.
RigReply ReplyWithoutConsole(const RigCommand& command);

// The console's capabilities, in the form that programs read when they connect.
std::string RigState();

} // namespace larkspool
