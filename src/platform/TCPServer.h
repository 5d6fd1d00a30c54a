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
    // A peer with more bytes waiting to be sent is disconnected.
    static constexpr std::size_t MostWaiting = std::size_t{64} * 1024;

    virtual ~TCPPeer() = default;

    // Returns the number of bytes read; 0: none at this moment. Unread bytes stay in the socket
    // and slow the sender down. Bytes that arrived before the end of the link can still be read.
    virtual std::size_t Read(std::span<std::uint8_t> destination) = 0;
    virtual void Write(std::string_view bytes) = 0; // ignored after the end of the link
    virtual void Close() = 0; // sends what is queued, then ends the link; raises no event
    virtual bool IsOpen() const = 0;

    std::function<void()> dataAvailable; // more bytes have arrived
};

// Lets programs of this computer connect, and no others: it listens on the loopback addresses
// 127.0.0.1 and ::1 only.
class TCPServer {
  public:
    virtual ~TCPServer() = default; // its peers remain

    virtual void Listen(int port) = 0; // LastErrorCode is valid at once, 0: success
    virtual void Close() = 0;          // its peers remain
    virtual int LastErrorCode() const = 0;

    std::function<void(std::unique_ptr<TCPPeer>)> accepted;
};

} // namespace larkspool
