#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>

namespace tonebridge {

// Sends datagrams to the broadcast address, which it looks up again every second and after each
// datagram that fails. Owned by the library.
class DatagramSender {
  public:
    explicit DatagramSender(std::function<std::string()> findBroadcastAddress);
    ~DatagramSender();
    DatagramSender(const DatagramSender&) = delete;
    DatagramSender& operator=(const DatagramSender&) = delete;

    // False if the datagram couldn't be sent. Any thread.
    bool Send(std::span<const std::byte> data, std::uint16_t port);

  private:
    bool TrySend(std::span<const std::byte> data, std::uint16_t port) const;
    bool OpenSocket();

    std::mutex mutex;
    const std::function<std::string()> findAddress;
    std::string address;
    std::chrono::steady_clock::time_point lookAgain{};
    int handle = -1;
};

} // namespace tonebridge
