// Opens the two links of a session as the console does, then reads and discards: the least that any
// client of such a receiver costs.
//   socket_floor HOST PORT
#include "link/CommandText.h"
#include "link/Handshake.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace larkspool; // NOLINT(google-build-using-namespace)

constexpr int KeepAlivePeriod = 1000; // ms

void SendCommand(int link, std::string_view text) {
    std::string frame = {'\x82', static_cast<char>(0x80U | text.size()), 0, 0, 0, 0}; // key of 0
    frame += text;
    send(link, frame.data(), frame.size(), MSG_NOSIGNAL);
}

int Open(LinkKind kind, const char* host, const char* port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::atoi(port)));
    inet_pton(AF_INET, host, &address.sin_addr);
    const int link = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(link, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        std::perror("connect");
        std::exit(1);
    }
    const std::string name = std::string(host) + ":" + port;
    const std::string request = UpgradeRequest(kind, std::time(nullptr), name, "a key of 16 byte");
    send(link, request.data(), request.size(), MSG_NOSIGNAL);
    std::array<char, 4096> reply = {};
    if (recv(link, reply.data(), reply.size(), 0) <= 0) {
        std::fputs("no reply\n", stderr);
        std::exit(1);
    }
    SendCommand(link, command::Authorization);
    return link;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: socket_floor HOST PORT\n", stderr);
        return 2;
    }
    const int audio = Open(LinkKind::Audio, argv[1], argv[2]);
    const int waterfall = Open(LinkKind::Waterfall, argv[1], argv[2]);
    for (const std::string_view text : command::AudioOK) {
        SendCommand(audio, text);
    }
    SendCommand(audio, command::Modulation("am", -4000, 4000, "10000"));
    for (const std::string& text : command::Waterfall(3, 0, 11, 10000 - 7.328)) {
        SendCommand(waterfall, text);
    }
    std::array<pollfd, 2> links = {{{audio, POLLIN, 0}, {waterfall, POLLIN, 0}}};
    std::array<char, 65536> bytes = {};
    std::time_t told = 0;
    for (;;) {
        poll(links.data(), links.size(), KeepAlivePeriod);
        for (const pollfd& link : links) {
            if (link.revents != 0 && recv(link.fd, bytes.data(), bytes.size(), 0) <= 0) {
                return 0;
            }
        }
        if (const std::time_t now = std::time(nullptr); now != told) {
            told = now;
            SendCommand(audio, command::KeepAlive);
            SendCommand(waterfall, command::KeepAlive);
        }
    }
}
