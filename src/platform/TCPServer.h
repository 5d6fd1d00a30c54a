#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

namespace larkspool {

// A program that has connected to a TCPServer. Its destruction ends the link. Events come from the
// event loop; a handler may close the peer, but not destroy it.
class TCPPeer {
  public:
    // A peer with more bytes waiting to be sent is cut.
    static constexpr std::size_t MostWaiting = std::size_t{64} * 1024;

    virtual ~TCPPeer() = default;

    // How many bytes there were; 0: none at this moment. What is not read stays where it is and
    // holds the sender back. What arrived before the end of the link can still be read after it.
    virtual std::size_t Read(std::span<std::uint8_t> destination) = 0;
    virtual void Write(std::string_view bytes) = 0; // dropped once the link has ended
    virtual void Close() = 0; // sends what waits, then ends the link; raises nothing
    virtual bool IsOpen() const = 0;

    std::function<void()> dataAvailable; // more bytes have arrived
};

// Lets programs of this computer connect, and no others: it listens on the loopback addresses
// 127.0.0.1 and ::1 only.
class TCPServer {
  public:
    virtual ~TCPServer() = default; // its peers live on

    virtual void Listen(int port) = 0; // LastErrorCode tells at once, 0 if all is well
    virtual void Close() = 0;          // its peers live on
    virtual int LastErrorCode() const = 0;

    std::function<void(std::unique_ptr<TCPPeer>)> accepted;
};

} // namespace larkspool
