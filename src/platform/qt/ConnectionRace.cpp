#include "platform/qt/ConnectionRace.h"

#include "platform/qt/DeleteLater.h"

#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace larkspool {

namespace {

constexpr int Stagger = 250; // ms from one attempt to the next

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t size = 0;

    const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&storage); }
};

template <typename Family>
SocketAddress Stored(const Family& address) {
    SocketAddress stored;
    std::memcpy(&stored.storage, &address, sizeof address);
    stored.size = sizeof address;
    return stored;
}

SocketAddress AddressOf(const QHostAddress& target, quint16 port) {
    if (target.protocol() == QAbstractSocket::IPv4Protocol) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(target.toIPv4Address());
        return Stored(address);
    }
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(port);
    const Q_IPV6ADDR bytes = target.toIPv6Address();
    std::memcpy(&address.sin6_addr, bytes.c, sizeof bytes.c);
    const QString scope = target.scopeId();
    address.sin6_scope_id = scope.toUInt();
    if (address.sin6_scope_id == 0 && !scope.isEmpty()) {
        address.sin6_scope_id = if_nametoindex(scope.toLocal8Bit().constData());
    }
    return Stored(address);
}

// The families alternate, and the first address stays the first.
QList<QHostAddress> InTurns(const QList<QHostAddress>& found) {
    std::array<QList<QHostAddress>, 2> families;
    for (const QHostAddress& address : found) {
        families.at(address.protocol() == found.front().protocol() ? 0 : 1).append(address);
    }
    QList<QHostAddress> turns;
    for (qsizetype i = 0; turns.size() < found.size(); ++i) {
        for (const auto& family : families) {
            if (i < family.size()) {
                turns.append(family[i]);
            }
        }
    }
    return turns;
}

SocketFailure FailureOf(int error) {
    switch (error) {
    case ECONNREFUSED:
    case ECONNRESET:
        return SocketFailure::Refused;
    case ETIMEDOUT:
        return SocketFailure::NoAnswer;
    case ENETUNREACH:
    case EHOSTUNREACH:
    case ENETDOWN:
    case EHOSTDOWN:
    case EADDRNOTAVAIL: // there is no address of this family on this computer
    case EAFNOSUPPORT:
        return SocketFailure::Unreachable;
    default:
        return SocketFailure::System;
    }
}

// If the addresses fail in different ways, the failure that says most is reported.
int Weight(SocketFailure failure) {
    switch (failure) {
    case SocketFailure::Refused:
        return 4;
    case SocketFailure::NoAnswer:
        return 3;
    case SocketFailure::Unreachable:
        return 2;
    case SocketFailure::System:
        return 1;
    default:
        return 0;
    }
}

void MakeNonBlocking(int descriptor) {
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

} // namespace

struct ConnectionRace::Attempt {
    explicit Attempt(int opened) : descriptor(opened) {}
    ~Attempt() {
        if (notifier) {
            notifier->setEnabled(false);
        }
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;

    int descriptor;
    OwnedByLoop<QSocketNotifier> notifier;
};

ConnectionRace::ConnectionRace() {
    next.setSingleShot(true);
    QObject::connect(&next, &QTimer::timeout, &next, [this] { TryNext(); });
}

ConnectionRace::~ConnectionRace() = default;

void ConnectionRace::Start(const QList<QHostAddress>& found, quint16 targetPort) {
    Stop();
    failure = SocketFailure::None;
    errorCode = ErrorLostConnection;
    waiting = InTurns(found);
    port = targetPort;
    next.start(0);
}

void ConnectionRace::Stop() {
    next.stop();
    waiting.clear();
    attempts.clear();
}

void ConnectionRace::TryNext() {
    if (!waiting.isEmpty()) {
        const bool begun = Begin(waiting.takeFirst());
        if (!begun || !waiting.isEmpty()) {
            next.start(begun ? Stagger : 0);
        }
    } else if (attempts.empty()) {
        const auto handler = lost; // it may end the race itself
        handler();
    }
}

// False: it has already failed.
bool ConnectionRace::Begin(const QHostAddress& target) {
    const SocketAddress address = AddressOf(target, port);
    auto attempt =
        std::make_unique<Attempt>(socket(address.storage.ss_family, SOCK_STREAM, IPPROTO_TCP));
    if (attempt->descriptor < 0) {
        NoteFailure(errno);
        return false;
    }
    MakeNonBlocking(attempt->descriptor);
    if (connect(attempt->descriptor, address.Get(), address.size) != 0 && errno != EINPROGRESS) {
        NoteFailure(errno);
        return false;
    }
    attempt->notifier =
        MakeOwnedByLoop<QSocketNotifier>(attempt->descriptor, QSocketNotifier::Write);
    QObject::connect(attempt->notifier.get(), &QSocketNotifier::activated, &next,
                     [this, begun = attempt.get()] { Answered(*begun); });
    attempts.push_back(std::move(attempt));
    return true;
}

void ConnectionRace::Answered(Attempt& attempt) {
    int error = 0;
    socklen_t size = sizeof error;
    if (getsockopt(attempt.descriptor, SOL_SOCKET, SO_ERROR, &error, &size) != 0) {
        error = errno;
    }
    if (error == 0) {
        const int descriptor = std::exchange(attempt.descriptor, -1);
        Stop();
        const auto handler = won;
        handler(descriptor);
        return;
    }
    NoteFailure(error);
    std::erase_if(attempts, [&attempt](const auto& one) { return one.get() == &attempt; });
    next.start(0);
}

void ConnectionRace::NoteFailure(int error) {
    const SocketFailure reason = FailureOf(error);
    if (Weight(reason) > Weight(failure)) {
        failure = reason;
        errorCode = reason == SocketFailure::System ? error : ErrorLostConnection;
    }
}

SocketFailure ConnectionRace::Failure() const {
    return Weight(failure) < Weight(SocketFailure::NoAnswer) && !attempts.empty()
               ? SocketFailure::NoAnswer
               : failure;
}

} // namespace larkspool
