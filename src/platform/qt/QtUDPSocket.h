#pragma once

#include "platform/UDPSocket.h"
#include "platform/qt/DeleteLater.h"

#include <QObject>
#include <QUdpSocket>

#include <optional>
#include <string>

namespace larkspool {

class Desktop;

// Datagrams on QUdpSocket. Owned by the caller of Desktop::MakeUDPSocket.
class QtUDPSocket : public UDPSocket {
  public:
    explicit QtUDPSocket(Desktop& theDesktop);

    void Connect() override;
    Datagram Read() override;
    std::string BroadcastAddress() const override;
    int LastErrorCode() const override { return lastErrorCode; }

  private:
    void Deliver();
    void DeliverLater();
    std::optional<Datagram> Receive(); // empty: no datagram waits

    Desktop& desktop;
    OwnedByLoop<QUdpSocket> socket;
    bool deliveryPlanned = false;
    std::optional<Datagram> next;                     // reported by dataAvailable, not yet read
    std::string buffer = std::string(65536, char{0}); // for the longest possible datagram
    int lastErrorCode = 0;
    QObject events; // deferred calls end with it; last, so that it is destroyed first
};

} // namespace larkspool
