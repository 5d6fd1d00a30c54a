#pragma once

#include <QAbstractSocket>

namespace larkspool {

// The code that the program knows for an error of Qt's: 102 for every failure of the network, else
// the system's own number.
int SystemErrorCode(QAbstractSocket::SocketError reason);

} // namespace larkspool
