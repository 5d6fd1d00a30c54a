#include "platform/qt/QtTCPSocket.h"

#include "platform/Desktop.h"
#include "platform/qt/SocketErrors.h"

#include <QNetworkProxy>
#include <QPointer>

#include <algorithm>
#include <cerrno>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace larkspool {

namespace {

constexpr int Patience = 20'000;                       // ms, for a connect and for a silent peer
constexpr qint64 ReceiveBuffer = qint64{256} * 1024;   // bytes; more stays in the kernel
constexpr qint64 SendQueueLimit = qint64{1024} * 1024; // bytes

bool MayBeName(std::string_view name) {
    return !name.empty() && std::none_of(name.begin(), name.end(), [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte <= ' ' || byte == 0x7f || letter == '/' || letter == ':';
    });
}

std::string WithoutBrackets(const std::string& address) {
    const bool inBrackets = address.starts_with('[') && address.ends_with(']');
    return inBrackets ? address.substr(1, address.size() - 2) : address;
}

void SetOption(qintptr descriptor, int option, int value) {
    setsockopt(static_cast<int>(descriptor), IPPROTO_TCP, option, &value, sizeof value);
}

// A silent peer is probed after 10 s, and given up after 20 s.
void NoticeDeadPeers(QTcpSocket& socket) {
    socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const qintptr descriptor = socket.socketDescriptor();
#ifdef TCP_USER_TIMEOUT
    SetOption(descriptor, TCP_USER_TIMEOUT, Patience);
    SetOption(descriptor, TCP_KEEPIDLE, 10);
#else
    SetOption(descriptor, TCP_KEEPALIVE, 10);
#endif
    SetOption(descriptor, TCP_KEEPINTVL, 3);
    SetOption(descriptor, TCP_KEEPCNT, 3);
}

} // namespace

QtTCPSocket::QtTCPSocket(Desktop& theDesktop) : desktop(theDesktop) {
    timeLimit.setSingleShot(true);
    QObject::connect(&timeLimit, &QTimer::timeout, &events, [this] { GiveUp(); });
    race.won = [this](int descriptor) { Connected(descriptor); };
    race.lost = [this] { Fail(race.ErrorCode(), race.Failure()); };
}

QtTCPSocket::~QtTCPSocket() { Close(); }

void QtTCPSocket::Connect() {
    Close();
    lastErrorCode = 0;
    lastFailure = SocketFailure::None;
    state = State::Connecting;
    const std::string target = WithoutBrackets(address);
    const QHostAddress literal(QString::fromStdString(target));
    if (literal.isNull() && !MayBeName(target)) {
        FailLater(ErrorNoSuchName, SocketFailure::NoSuchName);
    } else if (port < 1 || port > 65535) {
        FailLater(EINVAL, SocketFailure::NoSuchPort);
    } else {
        timeLimit.start(Patience);
        if (literal.isNull()) {
            LookUp(QString::fromStdString(target));
        } else {
            Race({literal});
        }
    }
}

void QtTCPSocket::LookUp(const QString& name) {
    const auto found = [this, mine = attempt](const QHostInfo& host) {
        if (mine == attempt) {
            lookup = -1;
            LookedUp(host);
        }
    };
    lookup = QHostInfo::lookupHost(name, &events, found);
}

void QtTCPSocket::LookedUp(const QHostInfo& host) {
    if (host.error() == QHostInfo::HostNotFound) {
        Fail(ErrorNoSuchName, SocketFailure::NoSuchName);
    } else if (host.error() != QHostInfo::NoError || host.addresses().isEmpty()) {
        Fail(ErrorLostConnection, SocketFailure::NoResolver);
    } else {
        Race(host.addresses());
    }
}

void QtTCPSocket::Race(const QList<QHostAddress>& found) {
    race.Start(found, static_cast<quint16>(port));
}

void QtTCPSocket::GiveUp() {
    Fail(ErrorLostConnection, lookup >= 0 ? SocketFailure::NoResolver : race.Failure());
}

void QtTCPSocket::Connected(int descriptor) {
    timeLimit.stop();
    link = MakeOwnedByLoop<QTcpSocket>();
    link->setProxy(QNetworkProxy::NoProxy);
    link->setReadBufferSize(ReceiveBuffer);
    if (!link->setSocketDescriptor(descriptor)) {
        close(descriptor);
        Fail(ErrorLostConnection, SocketFailure::Lost);
        return;
    }
    QObject::connect(link.get(), &QTcpSocket::readyRead, &events,
                     [this] { desktop.Raise(dataAvailable); });
    QObject::connect(link.get(), &QTcpSocket::errorOccurred, &events,
                     [this](QAbstractSocket::SocketError reason) { Lost(reason); });
    NoticeDeadPeers(*link);
    state = State::Connected;
    desktop.Raise(connected);
}

void QtTCPSocket::Lost(QAbstractSocket::SocketError reason) {
    if (state == State::Connected && !DeliverRest()) {
        return;
    }
    Fail(SystemErrorCode(reason), SocketFailure::Lost);
}

// Delivers what arrived before the peer closed. False if the handler has ended the link.
bool QtTCPSocket::DeliverRest() {
    const QPointer<QObject> alive(&events);
    const unsigned mine = attempt;
    std::size_t before = 0;
    while (BytesAvailable() > 0 && BytesAvailable() != before) {
        before = BytesAvailable();
        desktop.Raise(dataAvailable);
        if (!alive || mine != attempt) {
            return false;
        }
    }
    return true;
}

void QtTCPSocket::Disconnect() {
    if (state == State::Idle) {
        return;
    }
    if (state == State::Connected) {
        link->disconnect(&events); // a loss noticed only now is reported below, once
        link->flush();
    }
    Fail(ErrorLostConnection, SocketFailure::Lost);
}

void QtTCPSocket::Fail(int code, SocketFailure reason) {
    Close();
    lastErrorCode = code;
    lastFailure = reason;
    desktop.Raise(error);
}

void QtTCPSocket::FailLater(int code, SocketFailure reason) {
    Close();
    state = State::Failing;
    QTimer::singleShot(0, &events, [this, code, reason, mine = attempt] {
        if (mine == attempt) {
            Fail(code, reason);
        }
    });
}

void QtTCPSocket::Close() {
    ++attempt;
    state = State::Idle;
    timeLimit.stop();
    race.Stop();
    if (lookup >= 0) {
        QHostInfo::abortHostLookup(std::exchange(lookup, -1));
    }
    if (link) {
        link->disconnect(&events);
        link->abort();
        link.reset();
    }
}

std::size_t QtTCPSocket::BytesAvailable() const {
    return IsConnected() ? static_cast<std::size_t>(link->bytesAvailable()) : 0;
}

std::size_t QtTCPSocket::Read(std::span<std::uint8_t> destination) {
    if (!IsConnected()) {
        return 0;
    }
    const qint64 count = link->read(reinterpret_cast<char*>(destination.data()),
                                    static_cast<qint64>(destination.size()));
    return static_cast<std::size_t>(std::max<qint64>(count, 0));
}

std::string QtTCPSocket::ReadAll() {
    return IsConnected() ? link->readAll().toStdString() : std::string();
}

void QtTCPSocket::Write(std::string_view bytes) {
    if (!IsConnected()) {
        return;
    }
    link->write(bytes.data(), static_cast<qint64>(bytes.size()));
    if (link->bytesToWrite() > SendQueueLimit) {
        FailLater(ErrorLostConnection, SocketFailure::Lost);
    }
}

} // namespace larkspool
