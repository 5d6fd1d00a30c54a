#pragma once

#include "platform/TCPSocket.h"
#include "support/EventQueue.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace larkspool {

// A TCP socket whose other end is the test. Nothing happens until the event queue is advanced.
class VirtualTCPSocket : public TCPSocket {
  public:
    explicit VirtualTCPSocket(EventQueue& loop) : queue(loop) {}

    void Connect() override;
    void Disconnect() override;
    bool IsConnected() const override { return state == State::Connected; }
    std::size_t BytesAvailable() const override { return received.size(); }
    std::size_t Read(std::span<std::uint8_t> destination) override;
    std::string ReadAll() override;
    void Write(std::string_view bytes) override;
    int LastErrorCode() const override { return lastError; }
    SocketFailure LastFailure() const override { return lastFailure; }

    // The other end.
    bool IsConnecting() const { return state == State::Connecting; }
    void Accept(); // answers a Connect
    // Refuses a Connect, or loses the link.
    void Fail(int code = ErrorLostConnection, SocketFailure reason = SocketFailure::Lost);
    void Deliver(std::string_view bytes);                      // bytes arrive
    std::string TakeSent() { return std::exchange(sent, {}); } // what the program has written
    int connects = 0;                                          // calls of Connect so far
    std::function<void()> onConnect; // raised on the event loop after each of them

  private:
    enum class State { Idle, Connecting, Connected };

    void RaiseLater(std::function<void()> TCPSocket::*event);
    void End(int code, SocketFailure reason);

    EventQueue& queue;
    State state = State::Idle;
    std::string received;
    std::string sent;
    int lastError = 0;
    SocketFailure lastFailure = SocketFailure::None;
    std::shared_ptr<int> link = std::make_shared<int>(0); // renewed with each link: events of an
                                                          // earlier one are void
};

} // namespace larkspool
