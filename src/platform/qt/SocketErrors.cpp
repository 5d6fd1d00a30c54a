#include "platform/qt/SocketErrors.h"

#include "platform/TCPSocket.h"

#include <cerrno>

namespace larkspool {

int SystemErrorCode(QAbstractSocket::SocketError reason) {
    switch (reason) {
    case QAbstractSocket::SocketAccessError:
        return EACCES;
    case QAbstractSocket::SocketResourceError:
        return EMFILE;
    case QAbstractSocket::DatagramTooLargeError:
        return EMSGSIZE;
    case QAbstractSocket::AddressInUseError:
        return EADDRINUSE;
    case QAbstractSocket::SocketAddressNotAvailableError:
        return EADDRNOTAVAIL;
    case QAbstractSocket::UnsupportedSocketOperationError:
        return EOPNOTSUPP;
    default:
        return ErrorLostConnection;
    }
}

} // namespace larkspool
