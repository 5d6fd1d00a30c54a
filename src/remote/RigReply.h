#pragma once

#include "remote/RigCommand.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

// What comes of a command of rig control.
struct RigReply {
    // The protocol's numbers.
    enum class Code { Done = 0, Invalid = -1, Rejected = -9, NotAvailable = -11 };
    struct Value {
        std::string_view label; // of the extended answer; empty: it has none
        std::string text;
    };

    Code code = Code::Done;
    std::vector<Value> values = {}; // what was asked for; none if something was set
};

// As it goes out. Each line of a plain answer ends in an LF, each part of an extended one in the
// command's separator, and its last in an LF.
std::string RigReplyText(const RigCommand& command, const RigReply& reply);

inline constexpr std::string_view OnlyRigVfo = "VFOA";

// To what asks for nothing that shows or can be set: the same at any time.
RigReply ReplyWithoutConsole(const RigCommand& command);

// What a console can do, in the form that programs read when they connect.
std::string RigState();

} // namespace larkspool
