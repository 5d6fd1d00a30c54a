// Sends numbered datagrams to everyone on the network, as the console does, and listens for them
// as a peer on the same computer does. Prints where they all went, and fails unless each has come
// exactly once and in order.
#include "tonebridge/tonebridge.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

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

// The next datagram's number, -1 where none comes, and the address that it was sent to.
std::pair<std::int32_t, std::string> Receive(int handle) {
    std::int32_t number = -1;
    iovec place{&number, sizeof number};
    alignas(cmsghdr) std::array<char, 256> control{};
    msghdr message{};
    message.msg_iov = &place;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    if (recvmsg(handle, &message, 0) < 0 || CMSG_FIRSTHDR(&message) == nullptr) {
        return {-1, ""};
    }
    in_pktinfo info{}; // no other part was asked for
    std::memcpy(&info, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof info);
    std::array<char, INET_ADDRSTRLEN> text{};
    return {number, inet_ntop(AF_INET, &info.ipi_addr, text.data(), socklen_t{text.size()})};
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
    std::string destination;
    for (std::int32_t i = 0; i < Datagrams; ++i) {
        const auto [number, to] = Receive(handle);
        if (number != i || (i > 0 && to != destination)) {
            std::printf("%d came as the datagram %d, sent to %s\n", number, i, to.c_str());
            return 1;
        }
        destination = to;
    }
    std::puts(destination.c_str());
    return Receive(handle).first < 0 ? 0 : 1;
}
