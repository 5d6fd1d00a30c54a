#pragma once

#include "platform/TCPSocket.h"
#include "platform/qt/ConnectionRace.h"
#include "platform/qt/DeleteLater.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QList>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

namespace larkspool {

class Desktop;

// A stream on QTcpSocket. Every Connect has a QTcpSocket of its own, so that no event of an
// earlier link reaches a later one. Owned by the caller of Desktop::MakeTCPSocket.
class QtTCPSocket : public TCPSocket {
  public:
    explicit QtTCPSocket(Desktop& theDesktop);
    ~QtTCPSocket() override;

    void Connect() override;
    void Disconnect() override;
    bool IsConnected() const override { return state == State::Connected; }

    std::size_t BytesAvailable() const override;
    std::size_t Read(std::span<std::uint8_t> destination) override;
    std::string ReadAll() override;
    void Write(std::string_view bytes) override;

    int LastErrorCode() const override { return lastErrorCode; }
    SocketFailure LastFailure() const override { return lastFailure; }

  private:
    enum class State { Idle, Connecting, Connected, Failing };

    void LookUp(const QString& name);
    void LookedUp(const QHostInfo& host);
    void Race(const QList<QHostAddress>& found);
    void Connected(int descriptor);
    void GiveUp();
    void Lost(QAbstractSocket::SocketError reason);
    bool DeliverRest();
    void Fail(int code, SocketFailure reason);      // closes the link and raises error
    void FailLater(int code, SocketFailure reason); // the same, at the loop's next turn
    void Close();

    Desktop& desktop;
    OwnedByLoop<QTcpSocket> link;
    State state = State::Idle;
    unsigned attempt =
        0;           // by which a deferred call knows whether its link is still the current one
    int lookup = -1; // the running host lookup
    ConnectionRace race;
    int lastErrorCode = 0;
    SocketFailure lastFailure = SocketFailure::None;
    QTimer timeLimit;
    QObject events; // deferred calls end with it; last, so that it is destroyed first
};

} // namespace larkspool
