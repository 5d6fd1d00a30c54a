#pragma once

#include "platform/TCPServer.h"
#include "support/EventQueue.h"

#include <memory>
#include <string>
#include <utility>

namespace larkspool {

class VirtualTCPPeer;

// The other end of a link to a VirtualTCPServer: the test's own. Lives on when the program lets go.
class VirtualLink {
  public:
    explicit VirtualLink(EventQueue& loop) : queue(loop) {}

    void Send(std::string_view bytes); // reaches the program when the event queue is advanced
    std::string TakeReceived() { return std::exchange(received, {}); }
    bool IsOpen() const { return isOpen; } // the program has not hung up
    void HangUp() { isOpen = false; }

    bool readsNothing = false; // what the program writes waits

  private:
    friend class VirtualTCPPeer;

    EventQueue& queue;
    std::string sent;
    std::size_t taken = 0; // bytes of it that the program has read
    std::string received;
    std::size_t waiting = 0; // bytes
    bool isOpen = true;
    VirtualTCPPeer* peer = nullptr; // null when the program has let go
    std::shared_ptr<int> life = std::make_shared<int>(0);
};

class VirtualTCPPeer : public TCPPeer {
  public:
    explicit VirtualTCPPeer(std::shared_ptr<VirtualLink> other);
    ~VirtualTCPPeer() override;
    VirtualTCPPeer(const VirtualTCPPeer&) = delete;
    VirtualTCPPeer& operator=(const VirtualTCPPeer&) = delete;

    std::size_t Read(std::span<std::uint8_t> destination) override;
    void Write(std::string_view bytes) override;
    void Close() override { link->isOpen = false; }
    bool IsOpen() const override { return link->isOpen; }

  private:
    std::shared_ptr<VirtualLink> link;
};

// A TCP server whose peers are the test's.
class VirtualTCPServer : public TCPServer {
  public:
    explicit VirtualTCPServer(EventQueue& loop) : queue(loop) {}

    void Listen(int wanted) override { port = lastError == 0 ? wanted : 0; }
    void Close() override { port = 0; }
    int LastErrorCode() const override { return lastError; }

    std::shared_ptr<VirtualLink> Connect(); // a peer comes

    int port = 0; // 0: it doesn't listen
    int lastError = 0;

  private:
    EventQueue& queue;
};

} // namespace larkspool
