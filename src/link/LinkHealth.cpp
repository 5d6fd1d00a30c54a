#include "link/LinkHealth.h"

#include "platform/Text.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr int Forbearance = 3; // seconds without data before the status line says so

} // namespace

void LinkHealth::Arrived() { hasArrived = true; }

void LinkHealth::NotAReceiver(std::string_view reply) { failure = NotAReceiverWords(reply); }

// A server that is no receiver often closes the link too; the first reason says more.
void LinkHealth::Failed(SocketFailure reason, int code) {
    if (failure.empty()) {
        failure = FailureWords(reason, code);
    }
}

void LinkHealth::Tick() {
    ++seconds;
    silentSeconds = hasArrived ? 0 : silentSeconds + 1;
    hasArrived = false;
}

Remark LinkHealth::Problem() const {
    if (!failure.empty()) {
        return {failure, ""};
    }
    if (!hasSound) {
        return {seconds >= Forbearance ? "waiting for the receiver" : "", ""};
    }
    if (silentSeconds >= Forbearance) {
        return {"nothing received", " for " + Str(silentSeconds) + " s"};
    }
    return {hasWaterfall ? "" : "waterfall lost", ""};
}

std::string FailureWords(SocketFailure reason, int code) {
    switch (reason) {
    case SocketFailure::NoSuchName:
        return "no such host";
    case SocketFailure::NoSuchPort:
        return "no such port";
    case SocketFailure::NoResolver:
        return "the name can't be looked up";
    case SocketFailure::Refused:
        return "refused";
    case SocketFailure::NoAnswer:
        return "no answer";
    case SocketFailure::Unreachable:
        return "unreachable";
    case SocketFailure::System:
        return "error " + Str(code);
    default:
        return "link lost";
    }
}

std::string NotAReceiverWords(std::string_view reply) {
    constexpr std::size_t LongestLine = 60; // characters
    std::string line(FirstCharacters(reply.substr(0, reply.find_first_of("\r\n")), LongestLine));
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter >= 0 && letter < ' '; }, ' ');
    return line.empty() ? "not a receiver" : "not a receiver (" + line + ")";
}

} // namespace larkspool
