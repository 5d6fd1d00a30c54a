#pragma once

#include <functional>
#include <string>

namespace larkspool {

struct Datagram {
    std::string address; // of the peer, dotted
    int port = 0;
    std::string data;
};

// Receives datagrams on a port of this computer.
class UDPSocket {
  public:
    virtual ~UDPSocket() = default;

    virtual void Connect() = 0;  // binds the port; LastErrorCode is valid at once, 0: success
    virtual Datagram Read() = 0; // the oldest unread one; empty if there is none
    virtual std::string BroadcastAddress() const = 0; // where SendUdpCommand delivers
    virtual int LastErrorCode() const = 0;

    int port = 0;
    std::function<void()> dataAvailable; // once per datagram
};

} // namespace larkspool
