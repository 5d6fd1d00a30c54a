#pragma once

#include <functional>
#include <string>

namespace larkspool {

struct Datagram {
    std::string address; // dotted, of the peer
    int port = 0;
    std::string data;
};

// Receives datagrams on a port of this computer.
class UDPSocket {
  public:
    virtual ~UDPSocket() = default;

    virtual void Connect() = 0;  // binds the port; LastErrorCode tells at once, 0 if all is well
    virtual Datagram Read() = 0; // the oldest that waits; empty if none does
    virtual std::string BroadcastAddress() const = 0; // where SendUdpCommand delivers
    virtual int LastErrorCode() const = 0;

    int port = 0;
    std::function<void()> dataAvailable; // once a datagram, again while more wait
};

} // namespace larkspool
