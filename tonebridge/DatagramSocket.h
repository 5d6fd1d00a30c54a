#pragma once

namespace tonebridge {

// A datagram socket (IPv4) that child processes don't inherit. The caller closes it. Negative if
// the system refuses it.
int OpenDatagramSocket();

} // namespace tonebridge
