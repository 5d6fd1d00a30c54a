#include "platform/qt/QtUDPSocket.h"

#include "platform/Desktop.h"
#include "platform/qt/SocketErrors.h"

#include "tonebridge/BroadcastAddress.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <cerrno>

namespace larkspool {

namespace {

constexpr int turn = 4; // ms that datagrams may take of one turn of the event loop

} // namespace

QtUDPSocket::QtUDPSocket(Desktop& host) : desktop(host) {}

// The port is the program's alone: a second copy is told that it is taken.
void QtUDPSocket::Connect() {
    if (port < 1 || port > 65535) {
        socket.reset();
        lastErrorCode = EINVAL;
        return;
    }
    if (socket && socket->localPort() == port) {
        lastErrorCode = 0;
        return;
    }
    socket = MakeOwnedByLoop<QUdpSocket>();
    if (!socket->bind(QHostAddress::AnyIPv4, static_cast<quint16>(port),
                      QAbstractSocket::DontShareAddress)) {
        lastErrorCode = SystemErrorCode(socket->error());
        socket.reset();
        return;
    }
    lastErrorCode = 0;
    QObject::connect(socket.get(), &QUdpSocket::readyRead, &events, [this] { DeliverLater(); });
}

void QtUDPSocket::DeliverLater() {
    if (!deliveryPlanned) {
        deliveryPlanned = true;
        QTimer::singleShot(0, &events, [this] { Deliver(); });
    }
}

// One event a datagram, in portions, so that a flood leaves the loop time for the user.
void QtUDPSocket::Deliver() {
    deliveryPlanned = false;
    const QPointer<QObject> alive(&events);
    QElapsedTimer clock;
    clock.start();
    while (socket && socket->hasPendingDatagrams()) {
        if (clock.elapsed() >= turn) {
            DeliverLater();
            return;
        }
        wasRead = false;
        const auto handler = dataAvailable;
        desktop.Raise(handler);
        if (!alive || !wasRead) {
            return;
        }
    }
}

Datagram QtUDPSocket::Read() {
    Datagram datagram;
    if (!socket || !socket->hasPendingDatagrams()) {
        return datagram;
    }
    wasRead = true;
    QHostAddress sender;
    quint16 senderPort = 0;
    datagram.data.resize(
        static_cast<std::size_t>(std::max<qint64>(socket->pendingDatagramSize(), 0)));
    const qint64 size = socket->readDatagram(
        datagram.data.data(), static_cast<qint64>(datagram.data.size()), &sender, &senderPort);
    datagram.data.resize(static_cast<std::size_t>(std::max<qint64>(size, 0)));
    datagram.address = sender.toString().toStdString();
    datagram.port = senderPort;
    if (socket->hasPendingDatagrams()) {
        DeliverLater();
    }
    return datagram;
}

std::string QtUDPSocket::BroadcastAddress() const { return tonebridge::BroadcastAddress(); }

} // namespace larkspool
