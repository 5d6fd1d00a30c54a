#include "remote/RemoteReply.h"

#include "platform/Text.h"

namespace larkspool::reply {

namespace {

constexpr int Receivers = 1; // a console is one receiver

std::string Ended(std::string text) {
    text.push_back('\0');
    return text;
}

} // namespace

std::string ReceiverCount() { return Ended("vrxcount:" + Str(Receivers)); }

std::string StreamRate(double samplesPerSecond) {
    return Ended("streamrate:" + Str(samplesPerSecond));
}

std::string Frequency(double hertz) { return Ended("freq:" + Format(hertz, "000000000")); }

} // namespace larkspool::reply
