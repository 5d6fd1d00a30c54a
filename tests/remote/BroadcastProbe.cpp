// Sends numbered datagrams to everyone on the network, as the console does, and listens for them
// as a peer on the same computer does. Prints where they went, and fails unless each has come
// exactly once and in order.
#include "tonebridge/tonebridge.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <set>
#include <string>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int Port = 58286;
constexpr int Datagrams = 100;

int Listen() {
    const int handle = socket(AF_INET, SOCK_DGRAM, 0);
    const int on = 1;
    setsockopt(handle, IPPROTO_IP, IP_PKTINFO, &on, sizeof on);
    const timeval patience{0, 300'000};
    setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_port = htons(Port);
    return bind(handle, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0 ? handle : -1;
}

// The next datagram's number, -1 where none comes; notes the address that it was sent to.
int Receive(int handle, std::set<std::string>& destinations) {
    std::int32_t number = -1;
    iovec place{&number, sizeof number};
    alignas(cmsghdr) std::array<char, 256> control{};
    msghdr message{};
    message.msg_iov = &place;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    if (recvmsg(handle, &message, 0) < 0) {
        return -1;
    }
    for (const cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr;
         part = CMSG_NXTHDR(&message, const_cast<cmsghdr*>(part))) {
        if (part->cmsg_level == IPPROTO_IP && part->cmsg_type == IP_PKTINFO) {
            in_pktinfo info{};
            std::memcpy(&info, CMSG_DATA(part), sizeof info);
            std::array<char, INET_ADDRSTRLEN> text{};
            destinations.insert(
                inet_ntop(AF_INET, &info.ipi_addr, text.data(), socklen_t{text.size()}));
        }
    }
    return number;
}

} // namespace

int main() {
    const int handle = Listen();
    if (handle < 0) {
        std::puts("the port is taken");
        return 77;
    }
    for (std::int32_t i = 0; i < Datagrams; ++i) {
        SendUdpCommand(&i, sizeof i, Port);
    }
    std::set<std::string> destinations;
    int received = 0;
    int number = Receive(handle, destinations);
    for (; number == received; number = Receive(handle, destinations)) {
        ++received;
    }
    for (const std::string& destination : destinations) {
        std::puts(destination.c_str());
    }
    if (received != Datagrams || number >= 0) {
        std::printf("%d of %d came, then number %d\n", received, Datagrams, number);
        return 1;
    }
    return 0;
}
