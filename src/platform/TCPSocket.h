#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace larkspool {

// Error codes of all sockets. Any other code is the system's own number.
inline constexpr int ErrorLostConnection = 102; // lost, refused, reset, timed out, unreachable
inline constexpr int ErrorNoSuchName = 103;     // the name doesn't exist or is invalid

// Why a socket has raised its error, for the message to the user. Finer than the code.
enum class SocketFailure {
    None,
    NoSuchName,  // code 103
    NoSuchPort,  // outside 1 to 65535; the code is the system's own number
    NoResolver,  // no name server answers; code 102, as for those below
    Refused,     // the computer accepts no connection at that port
    NoAnswer,    // within 20 s, from any of the name's addresses
    Unreachable, // there is no route
    Lost,        // an open link has ended
    System       // anything else; the code is the system's own number
};

// A stream of bytes to another program. Events come from the event loop, except that Disconnect on
// a connected or connecting socket raises error with 102 before it returns. A link whose peer has
// vanished silently, or reads nothing of what is written to it, ends with 102 within about 20 s.
class TCPSocket {
  public:
    virtual ~TCPSocket() = default;

    // To address and port; always reports later. If a name has several addresses, all are tried,
    // each without waiting long for the one before, and the first that answers is used.
    virtual void Connect() = 0;
    virtual void Disconnect() = 0; // raises no event on an idle socket
    virtual bool IsConnected() const = 0;

    virtual std::size_t BytesAvailable() const = 0;
    virtual std::size_t
    Read(std::span<std::uint8_t> destination) = 0; // returns the number of bytes
    virtual std::string ReadAll() = 0;
    virtual void Write(std::string_view bytes) = 0; // ignored while not connected

    virtual int LastErrorCode() const = 0;
    virtual SocketFailure LastFailure() const = 0;

    std::string address; // a name, or an IP address; an IPv6 address may be in brackets
    int port = 0;

    std::function<void()> connected;
    std::function<void()> dataAvailable;
    std::function<void()> error; // the socket is closed; LastErrorCode says why
};

} // namespace larkspool
