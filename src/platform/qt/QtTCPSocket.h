#pragma once

#include "platform/TCPSocket.h"
#include "platform/qt/DeleteLater.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

namespace larkspool {

class Desktop;

// A stream on QTcpSocket. Every Connect has a QTcpSocket of its own, so that nothing of an earlier
// link can speak into a later one. Owned by whoever asked the desktop for it.
class QtTCPSocket : public TCPSocket {
  public:
    explicit QtTCPSocket(Desktop& host);
    ~QtTCPSocket() override;

    void Connect() override;
    void Disconnect() override;
    bool IsConnected() const override { return state == State::Connected; }

    std::size_t BytesAvailable() const override;
    std::size_t Read(std::span<std::uint8_t> destination) override;
    std::string ReadAll() override;
    void Write(std::string_view bytes) override;

    int LastErrorCode() const override { return lastErrorCode; }

  private:
    enum class State { Idle, Connecting, Connected, Failing };

    void LookUp();
    void Open();
    void Connected();
    void Lost(QAbstractSocket::SocketError reason);
    bool DeliverRest();
    void Fail(int code);      // closes the link and raises error
    void FailLater(int code); // the same, at the loop's next turn
    void Close();

    Desktop& desktop;
    OwnedByLoop<QTcpSocket> link;
    State state = State::Idle;
    unsigned attempt = 0; // tells a deferred call whether its link is still the present one
    int lookup = -1;      // the host lookup under way
    int lastErrorCode = 0;
    QTimer timeLimit;
    QObject events; // what is deferred dies with it; last, so that it goes first
};

} // namespace larkspool
