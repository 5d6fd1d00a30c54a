#include "demo/Server.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <iostream>
#include <system_error>
#include <utility>

#include <poll.h>
#include <sys/socket.h>

namespace larkspool::demo {
namespace {

constexpr double RequestSeconds = 10.0; // for the whole request to come
constexpr double FarewellSeconds = 2.0; // for the client to close after we did

std::vector<std::uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

OutputQueue& OutputOf(Peer& peer) {
    return peer.link && peer.reply.IsEmpty() ? peer.link->Output() : peer.reply;
}

bool HasSomethingToSend(Peer& peer, TimePoint now) {
    return !peer.hungUp && !OutputOf(peer).Ready(now).empty();
}

} // namespace

Server::Server(Options serverOptions) : options(std::move(serverOptions)), band(options.seed) {}

bool Server::Open(std::string& error) {
    for (std::size_t i = 0; i < listeners.size(); ++i) {
        const std::uint16_t port = i == HttpListener ? options.httpPort : options.ports[i];
        if (!listeners[i].Open(options.bindAddress, port, error)) {
            return false;
        }
        if (i != HttpListener) {
            pages.ports[i] = listeners[i].Port();
        }
    }
    pages.host = options.bindAddress == "0.0.0.0" ? "127.0.0.1" : options.bindAddress;
    pages.newest = options.newest;
    return true;
}

void Server::Say(const std::string& line) const {
    if (!options.quiet) {
        std::cout << line << std::endl;
    }
}

void Server::Run(int stopDescriptor) {
    for (bool stopped = false; !stopped;) {
        WaitAndServe(stopDescriptor, stopped);
    }
    peers.clear();
}

int Server::WaitMilliseconds(TimePoint now) const {
    TimePoint next = now + Seconds(1.0);
    for (const auto& peer : peers) {
        if (peer->link && !peer->hungUp) {
            next = std::min(next, peer->link->NextTime(now));
        }
    }
    const double left = std::chrono::duration<double>(next - now).count();
    return std::max(0, static_cast<int>(std::ceil(left * 1000.0)));
}

void Server::WaitAndServe(int stopDescriptor, bool& stopped) {
    TimePoint now = Clock::now();
    const bool accepting = peers.size() < MostPeers && now >= acceptAgainAt;
    std::vector<pollfd> watched{{stopDescriptor, POLLIN, 0}};
    for (const Listener& listener : listeners) {
        watched.push_back({listener.Get(), static_cast<short>(accepting ? POLLIN : 0), 0});
    }
    for (const auto& peer : peers) {
        // Output that the kernel wouldn't take is what POLLOUT waits for.
        const bool writing = HasSomethingToSend(*peer, now);
        watched.push_back(
            {peer->socket.Get(), static_cast<short>(writing ? POLLIN | POLLOUT : POLLIN), 0});
    }
    const int ready = ::poll(watched.data(), watched.size(), WaitMilliseconds(now));
    if (ready < 0 && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "poll");
    }
    now = Clock::now();
    if (ready > 0) {
        stopped = watched[0].revents != 0;
        const std::size_t first = 1 + listeners.size();
        for (std::size_t i = first; i < watched.size(); ++i) {
            if ((watched[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
                ReadFrom(*peers[i - first], now);
            }
        }
        for (std::size_t i = 0; i < listeners.size(); ++i) {
            if (watched[1 + i].revents != 0) {
                AcceptFrom(i, now);
            }
        }
    }
    for (const auto& peer : peers) {
        Advance(*peer, now);
    }
    std::erase_if(peers, [](const auto& peer) { return peer->dead; });
}

void Server::AcceptFrom(std::size_t listener, TimePoint now) {
    while (peers.size() < MostPeers) {
        Descriptor client = listeners[listener].Accept();
        if (!client.IsOpen()) {
            if (errno == EMFILE || errno == ENFILE) {
                acceptAgainAt = now + Seconds(1.0);
            }
            return;
        }
        auto peer = std::make_unique<Peer>();
        peer->socket = std::move(client);
        peer->listener = listener;
        peer->since = now;
        peers.push_back(std::move(peer));
    }
}

void Server::ReadFrom(Peer& peer, TimePoint now) {
    std::array<char, 16384> buffer{};
    const ssize_t count = ::recv(peer.socket.Get(), buffer.data(), buffer.size(), 0);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
        peer.dead = true;
    }
    if (count <= 0 || peer.replied) {
        return;
    }
    const auto size = static_cast<std::size_t>(count);
    if (peer.link) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(buffer.data());
        peer.link->Receive({bytes, size}, now, Moment::Now());
    } else {
        peer.request.append(buffer.data(), size);
        TakeRequest(peer, now);
    }
}

void Server::TakeRequest(Peer& peer, TimePoint now) {
    const auto size = HeadSize(peer.request);
    if (size && *size <= LargestRequest) {
        const std::string behind = peer.request.substr(*size);
        Answer(peer, peer.request.substr(0, *size), now);
        peer.request.clear();
        if (peer.link) {
            const auto* bytes = reinterpret_cast<const std::uint8_t*>(behind.data());
            peer.link->Receive({bytes, behind.size()}, now, Moment::Now());
        }
    } else if (size || peer.request.size() > LargestRequest) {
        peer.reply.Push(Bytes(HttpError("431 Request Header Fields Too Large")));
        peer.replied = true;
    }
}

void Server::Answer(Peer& peer, const std::string& head, TimePoint now) {
    const auto request = ParseRequest(head);
    const auto kind = request ? RequestedLink(*request) : std::nullopt;
    if (request && peer.listener == HttpListener) {
        peer.reply.Push(Bytes(HttpResponse(*request, pages)));
    } else if (kind) {
        const LinkSettings settings{options.rate, options.jitterSeconds, options.dropAfterSeconds,
                                    options.busy, options.seed};
        peer.reply.Push(Bytes(SwitchingReply(*request)));
        peer.link = std::make_unique<Link>(*kind, band, Antennas()[peer.listener], settings, now);
        Say("receiver " + std::to_string(peer.listener + 1) +
            (*kind == LinkKind::Sound ? ": sound link opened" : ": waterfall link opened"));
        return;
    } else {
        peer.reply.Push(Bytes(HttpError(request ? "404 Not Found" : "400 Bad Request")));
    }
    peer.replied = true;
}

void Server::WriteTo(Peer& peer, TimePoint now) {
    while (HasSomethingToSend(peer, now)) {
        OutputQueue& output = OutputOf(peer);
        const auto bytes = output.Ready(now);
        const ssize_t count = send(peer.socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0) {
            peer.dead = peer.dead || (errno != EAGAIN && errno != EINTR);
            return;
        }
        output.Consume(static_cast<std::size_t>(count));
    }
}

void Server::Advance(Peer& peer, TimePoint now) {
    if (peer.dead) {
        return;
    }
    if (peer.hungUp) {
        peer.dead = now > peer.since + Seconds(FarewellSeconds);
        return;
    }
    if (peer.link) {
        peer.link->Tick(now, Moment::Now());
        peer.dead = peer.link->IsCut(now);
    } else if (!peer.replied && now > peer.since + Seconds(RequestSeconds)) {
        peer.dead = true;
    }
    if (!peer.dead) {
        WriteTo(peer, now);
    }
    const bool ending = peer.replied || (peer.link && peer.link->IsEnding());
    if (ending && OutputOf(peer).IsEmpty()) {
        ::shutdown(peer.socket.Get(), SHUT_WR);
        peer.hungUp = true;
        peer.since = now;
    } else if (peer.replied && now > peer.since + Seconds(RequestSeconds + FarewellSeconds)) {
        peer.dead = true;
    }
}

} // namespace larkspool::demo
