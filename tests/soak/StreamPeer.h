#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace larkspool::soak {

// Another program on the network that has asked for the sound: every datagram must hold the samples
// that were heard, in order, and the next number.
class StreamPeer {
  public:
    void Hear(std::span<const std::int16_t> samples);
    void Take(std::string_view datagram);

    bool wants = false; // has asked for the sound
    std::int64_t datagrams = 0;
    std::int64_t faults = 0;

  private:
    std::string pending; // heard, and not yet streamed
    unsigned nextNumber = 0;
};

} // namespace larkspool::soak
