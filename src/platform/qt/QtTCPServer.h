#pragma once

#include "platform/TCPServer.h"
#include "platform/qt/DeleteLater.h"

#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>

namespace larkspool {

class Desktop;

// A link that QTcpServer has accepted.
class QtTCPPeer : public TCPPeer {
  public:
    QtTCPPeer(Desktop& theDesktop, QTcpSocket* accepted); // takes ownership
    ~QtTCPPeer() override;

    std::size_t Read(std::span<std::uint8_t> destination) override;
    void Write(std::string_view bytes) override;
    void Close() override;
    bool IsOpen() const override { return link->state() == QAbstractSocket::ConnectedState; }

  private:
    Desktop& desktop;
    OwnedByLoop<QTcpSocket> link;
};

// A server on two QTcpServers, one for each address. Owned by the caller of Desktop::MakeTCPServer.
class QtTCPServer : public TCPServer {
  public:
    explicit QtTCPServer(Desktop& theDesktop);

    void Listen(int port) override;
    void Close() override;
    int LastErrorCode() const override { return lastErrorCode; }

  private:
    void Accept(QTcpServer& server);

    Desktop& desktop;
    QTcpServer servers[2];
    int lastErrorCode = 0;
};

} // namespace larkspool
