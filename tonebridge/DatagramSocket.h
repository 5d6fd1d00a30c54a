#pragma once

namespace tonebridge {

// A datagram socket (IPv4) that programs started later don't inherit. The caller closes it;
// negative: there is none to be had.
int OpenDatagramSocket();

} // namespace tonebridge
