#pragma once

#include "platform/HTTPSocket.h"
#include "platform/TCPServer.h"
#include "platform/TCPSocket.h"
#include "platform/UDPSocket.h"
#include "support/EventQueue.h"

#include <deque>
#include <string>
#include <vector>

// Sockets whose other end is the test. Nothing happens until the event queue is advanced.
namespace larkspool {

class VirtualTCPSocket : public TCPSocket {
  public:
    explicit VirtualTCPSocket(EventQueue& loop) : queue(loop) {}

    void Connect() override {
        ++connects;
        Become(State::Connecting);
        sent.clear();
        queue.Call(link, onConnect);
    }
    void Disconnect() override {
        if (state != State::Idle) {
            End(ErrorLostConnection, SocketFailure::Lost);
        }
    }
    bool IsConnected() const override { return state == State::Connected; }
    std::size_t BytesAvailable() const override { return received.size(); }
    std::size_t Read(std::span<std::uint8_t> destination) override {
        const std::size_t count =
            received.copy(reinterpret_cast<char*>(destination.data()), destination.size());
        received.erase(0, count);
        return count;
    }
    std::string ReadAll() override { return std::exchange(received, {}); }
    void Write(std::string_view bytes) override {
        if (IsConnected()) {
            sent.append(bytes);
        }
    }
    int LastErrorCode() const override { return lastError; }
    SocketFailure LastFailure() const override { return lastFailure; }

    // The other end.
    bool IsConnecting() const { return state == State::Connecting; }
    void Accept() { // answers a Connect
        if (IsConnecting()) {
            state = State::Connected;
            queue.Call(link, connected);
        }
    }
    // Refuses a Connect, or loses the link.
    void Fail(int code = ErrorLostConnection, SocketFailure reason = SocketFailure::Lost) {
        if (state != State::Idle) {
            queue.After(0, link, [this, code, reason] { End(code, reason); });
        }
    }
    void Deliver(std::string_view bytes) { // they arrive
        if (IsConnected()) {
            received.append(bytes);
            queue.Call(link, dataAvailable);
        }
    }
    std::string TakeSent() { return std::exchange(sent, {}); } // what the program has written
    int connects = 0;                                          // calls of Connect so far
    std::function<void()> onConnect; // raised on the event loop after each of them

  private:
    enum class State { Idle, Connecting, Connected };

    void Become(State next) {
        state = next;
        link = EventQueue::NewLife();
        received.clear();
    }
    void End(int code, SocketFailure reason) {
        Become(State::Idle);
        lastError = code;
        lastFailure = reason;
        if (error) {
            error();
        }
    }

    EventQueue& queue;
    State state = State::Idle;
    std::string received;
    std::string sent;
    int lastError = 0;
    SocketFailure lastFailure = SocketFailure::None;
    EventQueue::Life link = EventQueue::NewLife(); // each link has its own
};

// The test's end of a link to a VirtualTCPServer. It remains when the program lets go.
class VirtualLink {
  public:
    explicit VirtualLink(EventQueue& loop) : queue(loop) {}

    void Send(std::string_view bytes) {
        sent.append(bytes);
        queue.After(0, life, [this] {
            if (peer != nullptr && peer->dataAvailable) {
                peer->dataAvailable();
            }
        });
    }
    std::string TakeReceived() { return std::exchange(received, {}); }
    bool IsOpen() const { return isOpen; } // the program has not hung up
    void HangUp() { isOpen = false; }

    bool readsNothing = false; // what the program writes waits

  private:
    friend class VirtualTCPPeer;

    EventQueue& queue;
    EventQueue::Life life = EventQueue::NewLife();
    TCPPeer* peer = nullptr; // null when the program has let go
    std::string sent;
    std::size_t taken = 0; // bytes of it that the program has read
    std::string received;
    std::string waiting; // what it has not read
    bool isOpen = true;
};

// The program's end.
class VirtualTCPPeer : public TCPPeer {
  public:
    explicit VirtualTCPPeer(std::shared_ptr<VirtualLink> other) : link(std::move(other)) {
        link->peer = this;
    }
    ~VirtualTCPPeer() override {
        link->peer = nullptr;
        link->isOpen = false;
    }
    VirtualTCPPeer(const VirtualTCPPeer&) = delete;

    std::size_t Read(std::span<std::uint8_t> destination) override {
        const std::size_t count = link->sent.copy(reinterpret_cast<char*>(destination.data()),
                                                  destination.size(), link->taken);
        link->taken += count;
        return count;
    }
    void Write(std::string_view bytes) override {
        if (link->isOpen) {
            (link->readsNothing ? link->waiting : link->received).append(bytes);
            link->isOpen = link->waiting.size() <= MostWaiting;
        }
    }
    void Close() override { link->isOpen = false; }
    bool IsOpen() const override { return link->isOpen; }

  private:
    std::shared_ptr<VirtualLink> link;
};

class VirtualTCPServer : public TCPServer {
  public:
    explicit VirtualTCPServer(EventQueue& loop) : queue(loop) {}

    void Listen(int wanted) override { port = lastError == 0 ? wanted : 0; }
    void Close() override { port = 0; }
    int LastErrorCode() const override { return lastError; }

    std::shared_ptr<VirtualLink> Connect() { // a peer comes
        auto link = std::make_shared<VirtualLink>(queue);
        if (auto peer = std::make_unique<VirtualTCPPeer>(link); port != 0 && accepted) {
            accepted(std::move(peer));
        }
        return link;
    }

    int port = 0; // 0: it doesn't listen
    int lastError = 0;

  private:
    EventQueue& queue;
};

class VirtualUDPSocket : public UDPSocket {
  public:
    explicit VirtualUDPSocket(EventQueue& loop) : queue(loop) {}

    void Connect() override { bound = lastError == 0; }
    Datagram Read() override {
        Datagram datagram;
        if (!waiting.empty()) {
            datagram = {"127.0.0.1", 50000, std::move(waiting.front())};
            waiting.pop_front();
        }
        return datagram;
    }
    std::string BroadcastAddress() const override { return "127.255.255.255"; }
    int LastErrorCode() const override { return lastError; }

    void Deliver(std::string data) {
        if (bound) {
            waiting.push_back(std::move(data));
            queue.Call(life, dataAvailable);
        }
    }

    bool bound = false;
    int lastError = 0;

  private:
    EventQueue& queue;
    std::deque<std::string> waiting;
    EventQueue::Life life = EventQueue::NewLife();
};

class VirtualHTTPSocket : public HTTPSocket {
  public:
    explicit VirtualHTTPSocket(std::shared_ptr<std::vector<VirtualHTTPSocket*>> open)
        : all(std::move(open)) {
        all->push_back(this);
    }
    ~VirtualHTTPSocket() override { std::erase(*all, this); }
    VirtualHTTPSocket(const VirtualHTTPSocket&) = delete;

    void Get(const std::string& wanted) override { url = wanted; }

    // The other end's answer. What a handler needs lives on, whatever it does with the socket.
    void Deliver(const std::string& content, int status = 200) const {
        const auto handler = pageReceived;
        handler(std::string(url), status, content);
    }
    void Fail(int code) const {
        const auto handler = error;
        handler(code);
    }

    std::string url; // empty: nothing was asked for yet

  private:
    std::shared_ptr<std::vector<VirtualHTTPSocket*>> all;
};

} // namespace larkspool
