#pragma once

#include "platform/UDPSocket.h"
#include "platform/qt/DeleteLater.h"

#include <QObject>
#include <QUdpSocket>

namespace larkspool {

class Desktop;

// Datagrams on QUdpSocket. Owned by whoever asked the desktop for it.
class QtUDPSocket : public UDPSocket {
  public:
    explicit QtUDPSocket(Desktop& host);

    void Connect() override;
    Datagram Read() override;
    std::string BroadcastAddress() const override;
    int LastErrorCode() const override { return lastErrorCode; }

  private:
    void Deliver();
    void DeliverLater();

    Desktop& desktop;
    OwnedByLoop<QUdpSocket> socket;
    bool deliveryPlanned = false;
    bool wasRead = false; // since the event
    int lastErrorCode = 0;
    QObject events; // what is deferred dies with it; last, so that it goes first
};

} // namespace larkspool
