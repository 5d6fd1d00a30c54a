#include "soak/StreamPeer.h"

namespace larkspool::soak {

namespace {

constexpr std::size_t SoundBytes = 1024;
constexpr std::size_t DatagramBytes = 1028;

} // namespace

void StreamPeer::Hear(std::span<const std::int16_t> samples) {
    if (wants) {
        pending.append(reinterpret_cast<const char*>(samples.data()), samples.size_bytes());
    }
}

void StreamPeer::Take(std::string_view datagram) {
    ++datagrams;
    const std::string number = {static_cast<char>(nextNumber & 0xFFU),
                                static_cast<char>(nextNumber >> 8U), '\0', '\0'};
    nextNumber = (nextNumber + 1) & 0xFFFFU;
    const std::string_view sound = std::string_view(pending).substr(0, SoundBytes);
    if (datagram.size() != DatagramBytes || datagram.substr(0, SoundBytes) != sound ||
        datagram.substr(SoundBytes) != number) {
        ++faults;
    }
    pending.erase(0, SoundBytes);
}

} // namespace larkspool::soak
