#include "remote/RigReply.h"

#include "platform/Text.h"
#include "shell/Version.h"

namespace larkspool {

namespace {

using Code = RigReply::Code;

bool MeansOnlyVfo(std::string_view name) {
    return name == OnlyRigVfo || name == "Main" || name == "currVFO" || name == "VFO";
}

std::string Report(RigReply::Code code) { return "RPRT " + Str(static_cast<int>(code)) + "\n"; }

std::string ExtendedText(const RigCommand& command, const RigReply& reply) {
    std::string text(command.name);
    text += command.arguments.empty() ? ":" : ": " + command.arguments;
    text += command.separator;
    for (const auto& [label, value] : reply.values) {
        if (!label.empty()) {
            text.append(label).append(": ");
        }
        text += value + command.separator;
    }
    return text + Report(reply.code);
}

} // namespace

std::string RigReplyText(const RigCommand& command, const RigReply& reply) {
    if (command.separator != '\0' && !command.name.empty()) {
        return ExtendedText(command, reply);
    }
    if (reply.values.empty()) {
        return Report(reply.code);
    }
    std::string text;
    for (const RigReply::Value& value : reply.values) {
        text += value.text + "\n";
    }
    return text;
}

RigReply ReplyWithoutConsole(const RigCommand& command) {
    switch (command.verb) {
    case RigVerb::GetVfo:
        return {Code::Done, {{"VFO", std::string(OnlyRigVfo)}}};
    case RigVerb::SetVfo:
        return {MeansOnlyVfo(command.word) ? Code::Done : Code::NotAvailable};
    case RigVerb::GetSplit:
        return {Code::Done, {{"Split", "0"}, {"TX VFO", std::string(OnlyRigVfo)}}};
    case RigVerb::SetSplit:
        return {command.number == 0 ? Code::Done : Code::NotAvailable};
    case RigVerb::GetPowerState:
        return {Code::Done, {{"Power Status", "1"}}};
    case RigVerb::GetLockMode: // rigctl sets a mode only if it is not locked
        return {Code::Done, {{"Locked", "0"}}};
    case RigVerb::CheckVfo: // whether commands name a VFO
        return {Code::Done, {{"ChkVFO", "0"}}};
    case RigVerb::DumpState:
        return {Code::Done, {{"", RigState()}}};
    case RigVerb::GetInfo:
        return {Code::Done, {{"Info", std::string("Larkspool ") + version::Short}}};
    case RigVerb::Quit:
        return {};
    case RigVerb::Unreadable:
        return {Code::Invalid};
    default:
        return {Code::NotAvailable};
    }
}

// Bits of a mode: AM 1, CW 2, USB 4, LSB 8, FM 0x20, CWR 0x80, AMS 0x200, data on LSB 0x400 and on
// USB 0x800. Bits of a level: volume 8, squelch 0x20, strength 0x40000000.
std::string RigState() {
    return "1\n" // the protocol's version
           "2\n" // the model: one that is spoken to over a network
           "0\n" // the region: none
           // Receiving: from, to (Hz), modes, least and most power, VFO A, antenna 1.
           "0.000000 2000000000.000000 0xeae -1 -1 0x1 0x1\n"
           "0 0 0 0 0 0 0\n"
           "0 0 0 0 0 0 0\n" // sending: nothing
           "0xeae 1\n"       // tuning step in Hz
           "0 0\n"
           // The modes' usual widths in Hz, then 0 for any.
           "0x1 10000\n"
           "0x200 9800\n"
           "0x82 400\n"
           "0xc0c 2600\n"
           "0x20 12000\n"
           "0xeae 0\n"
           "0 0\n"
           "0\n0\n0\n" // no offsets of receiving, sending and IF
           "0\n"       // announces nothing
           "0\n0\n"    // no preamplifier, no attenuator
           "0x0\n0x0\n"
           "0x40000028\n" // levels that can be read
           "0x28\n"       // levels that can be set
           "0x0\n0x0\n"
           "vfo_ops=0x0\n"
           "ptt_type=0x0\n"
           "targetable_vfo=0x0\n"
           "has_set_vfo=1\n"
           "has_get_vfo=1\n"
           "has_set_freq=1\n"
           "has_get_freq=1\n"
           "has_set_conf=0\n"
           "has_get_conf=0\n"
           "has_power2mW=0\n"
           "has_mW2power=0\n"
           "timeout=0\n"
           "rig_model=2\n"
           "done";
}

} // namespace larkspool
