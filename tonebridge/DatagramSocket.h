#pragma once

namespace tonebridge {

// A datagram socket (IPv4) that child processes don't inherit. The caller closes it; negative: the
// system has refused it.
int OpenDatagramSocket();

} // namespace tonebridge
