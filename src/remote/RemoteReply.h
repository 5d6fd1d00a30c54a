#pragma once

#include <string>

namespace larkspool {

// What the console tells a program on the network: one text a datagram, ended by a zero byte, which
// is part of the datagram.
namespace reply {

std::string ReceiverCount();
std::string StreamRate(double samplesPerSecond);
std::string Frequency(double hertz);

} // namespace reply

} // namespace larkspool
