#include "demo/Listener.h"

#include <cerrno>
#include <system_error>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace larkspool::demo {
namespace {

std::string LastError() { return std::generic_category().message(errno); }

bool MakeQuiet(int socket) {
    const int flags = ::fcntl(socket, F_GETFL, 0);
    return flags >= 0 && ::fcntl(socket, F_SETFL, flags | O_NONBLOCK) == 0 &&
           ::fcntl(socket, F_SETFD, FD_CLOEXEC) == 0;
}

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(value, other.value);
    return *this;
}

Descriptor::~Descriptor() {
    if (value >= 0) {
        ::close(value);
    }
}

bool Listener::Open(const std::string& address, std::uint16_t wantedPort, std::string& error) {
    sockaddr_in where{};
    where.sin_family = AF_INET;
    where.sin_port = htons(wantedPort);
    if (::inet_pton(AF_INET, address.c_str(), &where.sin_addr) != 1) {
        error = address + " is not an IPv4 address";
        return false;
    }
    socket = Descriptor(::socket(AF_INET, SOCK_STREAM, 0));
    const int yes = 1;
    auto* plain = reinterpret_cast<sockaddr*>(&where);
    socklen_t size = sizeof where;
    if (!socket.IsOpen() || !MakeQuiet(socket.Get()) ||
        ::setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) != 0 ||
        ::bind(socket.Get(), plain, size) != 0 || ::listen(socket.Get(), 64) != 0 ||
        ::getsockname(socket.Get(), plain, &size) != 0) {
        error = address + ":" + std::to_string(wantedPort) + ": " + LastError();
        return false;
    }
    port = ntohs(where.sin_port);
    return true;
}

Descriptor Listener::Accept() const {
    Descriptor client(::accept(socket.Get(), nullptr, nullptr));
    if (!client.IsOpen() || !MakeQuiet(client.Get())) {
        return {};
    }
    // Small buffers: a slow reader should lose frames here, not fall behind.
    const int bufferBytes = 65536;
    const int yes = 1;
    ::setsockopt(client.Get(), SOL_SOCKET, SO_SNDBUF, &bufferBytes, sizeof bufferBytes);
    ::setsockopt(client.Get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    return client;
}

} // namespace larkspool::demo
