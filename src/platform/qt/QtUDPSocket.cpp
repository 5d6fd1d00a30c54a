#include "platform/qt/QtUDPSocket.h"

#include "platform/Desktop.h"
#include "platform/qt/SocketErrors.h"

#include "tonebridge/BroadcastAddress.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QPointer>
#include <QTimer>

#include <cerrno>
#include <utility>

namespace larkspool {

namespace {

constexpr int Turn = 4; // ms for datagrams in one turn of the event loop

} // namespace

QtUDPSocket::QtUDPSocket(Desktop& theDesktop) : desktop(theDesktop) {}

// The port is exclusive: a second copy of the program gets an error.
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

// One event per datagram, in portions, so that a flood leaves the loop time for the user. The last
// read must find nothing: otherwise QUdpSocket may not report the next datagram.
void QtUDPSocket::Deliver() {
    deliveryPlanned = false;
    const QPointer<QObject> alive(&events);
    QElapsedTimer clock;
    clock.start();
    while (!next) {
        if (clock.elapsed() >= Turn) {
            DeliverLater();
            return;
        }
        next = Receive();
        if (!next) {
            return;
        }
        desktop.Raise(dataAvailable);
        if (!alive) {
            return;
        }
    }
}

std::optional<Datagram> QtUDPSocket::Receive() {
    if (!socket) {
        return std::nullopt;
    }
    QHostAddress sender;
    quint16 senderPort = 0;
    const qint64 size = socket->readDatagram(buffer.data(), static_cast<qint64>(buffer.size()),
                                             &sender, &senderPort);
    if (size < 0) {
        return std::nullopt;
    }
    return Datagram{sender.toString().toStdString(), senderPort,
                    buffer.substr(0, static_cast<std::size_t>(size))};
}

Datagram QtUDPSocket::Read() {
    if (!next) {
        next = Receive();
    }
    Datagram datagram = std::exchange(next, std::nullopt).value_or(Datagram());
    DeliverLater();
    return datagram;
}

std::string QtUDPSocket::BroadcastAddress() const { return tonebridge::BroadcastAddress(); }

} // namespace larkspool
