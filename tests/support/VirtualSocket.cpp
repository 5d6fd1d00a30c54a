#include "support/VirtualSocket.h"

#include <algorithm>
#include <cstring>

namespace larkspool {

void VirtualTCPSocket::RaiseLater(std::function<void()> TCPSocket::*event) {
    queue.After(0, [this, event, token = std::weak_ptr<int>(link)] {
        if (!token.expired() && this->*event) {
            (this->*event)();
        }
    });
}

void VirtualTCPSocket::Connect() {
    ++connects;
    state = State::Connecting;
    link = std::make_shared<int>(0);
    received.clear();
    sent.clear();
    queue.After(0, [this, token = std::weak_ptr<int>(link)] {
        if (!token.expired() && onConnect) {
            onConnect();
        }
    });
}

void VirtualTCPSocket::Disconnect() {
    if (state != State::Idle) {
        End(ErrorLostConnection, SocketFailure::Lost);
    }
}

void VirtualTCPSocket::End(int code, SocketFailure reason) {
    state = State::Idle;
    link = std::make_shared<int>(0);
    received.clear();
    lastError = code;
    lastFailure = reason;
    if (error) {
        error();
    }
}

std::size_t VirtualTCPSocket::Read(std::span<std::uint8_t> destination) {
    const std::size_t count = std::min(destination.size(), received.size());
    std::memcpy(destination.data(), received.data(), count);
    received.erase(0, count);
    return count;
}

std::string VirtualTCPSocket::ReadAll() { return std::exchange(received, {}); }

void VirtualTCPSocket::Write(std::string_view bytes) {
    if (state == State::Connected) {
        sent.append(bytes);
    }
}

void VirtualTCPSocket::Accept() {
    if (state == State::Connecting) {
        state = State::Connected;
        RaiseLater(&TCPSocket::connected);
    }
}

void VirtualTCPSocket::Fail(int code, SocketFailure reason) {
    queue.After(0, [this, code, reason, token = std::weak_ptr<int>(link)] {
        if (!token.expired() && state != State::Idle) {
            End(code, reason);
        }
    });
}

void VirtualTCPSocket::Deliver(std::string_view bytes) {
    if (state == State::Connected) {
        received.append(bytes);
        RaiseLater(&TCPSocket::dataAvailable);
    }
}

} // namespace larkspool
