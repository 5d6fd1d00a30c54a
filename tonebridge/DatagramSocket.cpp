#include "tonebridge/DatagramSocket.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace tonebridge {

int OpenDatagramSocket() {
    const int handle = socket(AF_INET, SOCK_DGRAM, 0);
    if (handle >= 0) {
        fcntl(handle, F_SETFD, FD_CLOEXEC); // not every system accepts this flag at the opening
    }
    return handle;
}

} // namespace tonebridge
