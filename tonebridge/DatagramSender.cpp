#include "tonebridge/DatagramSender.h"

#include "tonebridge/DatagramSocket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tonebridge {

DatagramSender::DatagramSender(std::function<std::string()> findBroadcastAddress)
    : findAddress(std::move(findBroadcastAddress)) {}

DatagramSender::~DatagramSender() {
    if (handle >= 0) {
        close(handle);
    }
}

bool DatagramSender::Send(std::span<const std::byte> data, std::uint16_t port) {
    const std::lock_guard lock(mutex);
    if (!OpenSocket()) {
        return false;
    }
    const auto now = std::chrono::steady_clock::now();
    const bool isFresh = now < lookAgain;
    if (!isFresh) {
        address = findAddress();
        lookAgain = now + std::chrono::seconds(1);
    }
    if (TrySend(data, port)) {
        return true;
    }
    if (!isFresh) {
        return false;
    }
    address = findAddress();
    return TrySend(data, port);
}

bool DatagramSender::TrySend(std::span<const std::byte> data, std::uint16_t port) const {
    sockaddr_in peer{};
    peer.sin_family = AF_INET;
    peer.sin_port = htons(port);
    if (inet_pton(AF_INET, address.c_str(), &peer.sin_addr) != 1) {
        return false;
    }
    return sendto(handle, data.data(), data.size(), MSG_DONTWAIT,
                  reinterpret_cast<const sockaddr*>(&peer), sizeof peer) >= 0;
}

bool DatagramSender::OpenSocket() {
    if (handle < 0) {
        handle = OpenDatagramSocket();
        const int on = 1;
        if (handle >= 0) {
            setsockopt(handle, SOL_SOCKET, SO_BROADCAST, &on, sizeof on);
        }
    }
    return handle >= 0;
}

} // namespace tonebridge
