#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace larkspool::demo {

// Owns a file descriptor and closes it.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : value(number) {}
    Descriptor(Descriptor&& other) noexcept : value(std::exchange(other.value, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int Get() const { return value; }
    bool IsOpen() const { return value >= 0; }

  private:
    int value = -1;
};

// A listening TCP port; no call blocks.
class Listener {
  public:
    // Port 0 lets the system pick. On failure error says why.
    bool Open(const std::string& address, std::uint16_t wantedPort, std::string& error);

    // The next waiting client, closed if there is none.
    Descriptor Accept() const;

    std::uint16_t Port() const { return port; }
    int Get() const { return socket.Get(); }

  private:
    Descriptor socket;
    std::uint16_t port = 0;
};

} // namespace larkspool::demo
