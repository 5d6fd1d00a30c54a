#include "support/VirtualServer.h"

#include <algorithm>
#include <cstring>

namespace larkspool {

void VirtualLink::Send(std::string_view bytes) {
    sent.append(bytes);
    queue.After(0, [this, token = std::weak_ptr<int>(life)] {
        if (!token.expired() && peer != nullptr && peer->dataAvailable) {
            peer->dataAvailable();
        }
    });
}

VirtualTCPPeer::VirtualTCPPeer(std::shared_ptr<VirtualLink> other) : link(std::move(other)) {
    link->peer = this;
}

VirtualTCPPeer::~VirtualTCPPeer() {
    link->peer = nullptr;
    link->isOpen = false;
}

std::size_t VirtualTCPPeer::Read(std::span<std::uint8_t> destination) {
    const std::size_t count = std::min(destination.size(), link->sent.size() - link->taken);
    std::memcpy(destination.data(), link->sent.data() + link->taken, count);
    link->taken += count;
    if (link->taken == link->sent.size()) {
        link->sent.clear();
        link->taken = 0;
    }
    return count;
}

void VirtualTCPPeer::Write(std::string_view bytes) {
    if (!link->isOpen) {
        return;
    }
    if (!link->readsNothing) {
        link->received.append(bytes);
        return;
    }
    link->waiting += bytes.size();
    if (link->waiting > MostWaiting) {
        Close();
    }
}

std::shared_ptr<VirtualLink> VirtualTCPServer::Connect() {
    auto link = std::make_shared<VirtualLink>(queue);
    auto peer = std::make_unique<VirtualTCPPeer>(link);
    if (port != 0 && accepted) {
        accepted(std::move(peer));
    }
    return link;
}

} // namespace larkspool
