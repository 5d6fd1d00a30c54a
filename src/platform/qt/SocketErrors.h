#pragma once

#include <QAbstractSocket>

namespace larkspool {

// The program's code for an error of Qt: 102 for every failure of the network, otherwise the
// system's own number.
int SystemErrorCode(QAbstractSocket::SocketError reason);

} // namespace larkspool
