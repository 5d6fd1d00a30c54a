#include "platform/qt/QtTCPServer.h"

#include "platform/Desktop.h"
#include "platform/qt/SocketErrors.h"

#include <QHostAddress>

#include <algorithm>
#include <array>
#include <cerrno>

namespace larkspool {

namespace {

constexpr qint64 ReceiveBuffer = 4096; // bytes; more stays in the kernel

} // namespace

QtTCPPeer::QtTCPPeer(Desktop& theDesktop, QTcpSocket* accepted)
    : desktop(theDesktop), link(accepted) {
    link->setParent(nullptr);
    link->setReadBufferSize(ReceiveBuffer);
    link->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    // Otherwise the kernel's own queues grow to megabytes before a peer that reads nothing is
    // noticed, or one that sends too much has to wait.
    for (const auto queue : {QAbstractSocket::SendBufferSizeSocketOption,
                             QAbstractSocket::ReceiveBufferSizeSocketOption}) {
        link->setSocketOption(queue, static_cast<int>(MostWaiting));
    }
    QObject::connect(link.get(), &QTcpSocket::readyRead, link.get(),
                     [this] { desktop.Raise(dataAvailable); });
}

QtTCPPeer::~QtTCPPeer() { link->abort(); }

std::size_t QtTCPPeer::Read(std::span<std::uint8_t> destination) {
    if (!link->isReadable()) { // disconnected
        return 0;
    }
    const qint64 count = link->read(reinterpret_cast<char*>(destination.data()),
                                    static_cast<qint64>(destination.size()));
    return static_cast<std::size_t>(std::max<qint64>(count, 0));
}

// Flushed at once: a peer may close its half of the link right after its question, and must still
// get the answer.
void QtTCPPeer::Write(std::string_view bytes) {
    if (!IsOpen()) {
        return;
    }
    link->write(bytes.data(), static_cast<qint64>(bytes.size()));
    link->flush();
    if (link->bytesToWrite() > static_cast<qint64>(MostWaiting)) {
        link->abort();
    }
}

void QtTCPPeer::Close() { link->disconnectFromHost(); }

QtTCPServer::QtTCPServer(Desktop& theDesktop) : desktop(theDesktop) {
    for (QTcpServer& server : servers) {
        QObject::connect(&server, &QTcpServer::newConnection, &server,
                         [this, &server] { Accept(server); });
    }
}

// A computer without IPv6 has no ::1; then 127.0.0.1 is enough.
void QtTCPServer::Listen(int port) {
    constexpr std::array Addresses = {QHostAddress::LocalHost, QHostAddress::LocalHostIPv6};
    Close();
    lastErrorCode = 0;
    if (port < 1 || port > 65535) {
        lastErrorCode = EINVAL;
        return;
    }
    for (std::size_t i = 0; i < Addresses.size(); ++i) {
        if (!servers[i].listen(QHostAddress(Addresses[i]), static_cast<quint16>(port))) {
            const int code = SystemErrorCode(servers[i].serverError());
            if (i == 0 || code == EADDRINUSE) {
                lastErrorCode = code;
            }
        }
    }
}

void QtTCPServer::Close() {
    for (QTcpServer& server : servers) {
        server.close();
    }
}

void QtTCPServer::Accept(QTcpServer& server) {
    while (QTcpSocket* link = server.nextPendingConnection()) {
        auto peer = std::make_unique<QtTCPPeer>(desktop, link);
        desktop.Raise([&] {
            if (accepted) {
                accepted(std::move(peer));
            }
        });
    }
}

} // namespace larkspool
