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
inline constexpr int ErrorNoSuchName = 103;     // the name doesn't exist, or isn't one

// Why a socket has raised its error, for what the user is told. Finer than the code.
enum class SocketFailure {
    None,
    NoSuchName,  // code 103
    NoSuchPort,  // outside 1 to 65535; a number of the system's
    NoResolver,  // nothing can tell now whether the name exists, 102 like those below
    Refused,     // the computer is there and takes no connection at that port
    NoAnswer,    // within 20 s, by any of the name's addresses
    Unreachable, // no way leads there
    Lost,        // a link that stood
    System       // anything else; the code is the system's own number
};

// A stream of bytes to another program. Events come from the event loop, except that Disconnect on
// a connected or connecting socket raises error with 102 before it returns. A link whose peer has
// vanished without a word is noticed within about 20 s and ends as 102, and so does one whose peer
// takes none of what is written to it.
class TCPSocket {
  public:
    virtual ~TCPSocket() = default;

    // To address and port; reports later, always. Of a name with several addresses all are tried,
    // the next one while the last hasn't answered yet, and the first that answers is taken.
    virtual void Connect() = 0;
    virtual void Disconnect() = 0; // on an idle socket raises nothing
    virtual bool IsConnected() const = 0;

    virtual std::size_t BytesAvailable() const = 0;
    virtual std::size_t Read(std::span<std::uint8_t> destination) = 0; // how many bytes there were
    virtual std::string ReadAll() = 0;
    virtual void Write(std::string_view bytes) = 0; // dropped while not connected

    virtual int LastErrorCode() const = 0;
    virtual SocketFailure LastFailure() const = 0;

    std::string address; // a name, or an IP address; one of IPv6 may be in brackets
    int port = 0;

    std::function<void()> connected;
    std::function<void()> dataAvailable;
    std::function<void()> error; // the socket is closed by now; LastErrorCode says why
};

} // namespace larkspool
