#pragma once

#include "platform/TCPSocket.h"

#include <QHostAddress>
#include <QList>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace larkspool {

// Tries a name's addresses until one answers, as in RFC 8305: the next one starts when the last has
// failed, or hasn't answered for 250 ms; the first that answers wins, and the others are closed.
// IPv4 and IPv6 alternate. Has no time limit of its own. Owned by a socket.
class ConnectionRace {
  public:
    ConnectionRace();
    ~ConnectionRace();
    ConnectionRace(const ConnectionRace&) = delete;
    ConnectionRace& operator=(const ConnectionRace&) = delete;

    void Start(const QList<QHostAddress>& found, quint16 targetPort);
    void Stop(); // no event is raised afterwards
    // The result of the addresses tried so far; one that hasn't answered yet is NoAnswer.
    SocketFailure Failure() const;
    int ErrorCode() const { return errorCode; } // 102, or the system's own number

    // Raised by the event loop, never inside Start; one of them, once. Each may stop the race.
    std::function<void(int descriptor)> won; // a connected socket, which the handler owns
    std::function<void()> lost;              // no address has answered

  private:
    struct Attempt;

    void TryNext();
    bool Begin(const QHostAddress& target);
    void Answered(Attempt& attempt);
    void NoteFailure(int error);

    QList<QHostAddress> waiting;
    quint16 port = 0;
    std::vector<std::unique_ptr<Attempt>> attempts; // under way
    SocketFailure failure = SocketFailure::None;
    int errorCode = 0;
    QTimer next;
};

} // namespace larkspool
