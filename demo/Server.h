#pragma once

#include "demo/Band.h"
#include "demo/HttpPages.h"
#include "demo/Link.h"
#include "demo/Listener.h"
#include "demo/Options.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace larkspool::demo {

// One TCP connection, from its request to its end; the server owns it.
struct Peer {
    Descriptor socket;
    std::size_t listener = 0; // 0 to 6: a receiver, 7: the web server
    TimePoint since;
    std::string request;        // the part of the head that has arrived
    std::unique_ptr<Link> link; // after the upgrade
    OutputQueue reply;          // HTTP, before or instead of the link's output
    bool replied = false;       // only the end is still read
    bool hungUp = false;        // our side is closed, theirs not yet
    bool dead = false;
};

// The seven receivers and the web server, in one loop on one thread.
class Server {
  public:
    explicit Server(Options serverOptions);

    // Opens all ports; on failure says which and why.
    bool Open(std::string& error);

    std::uint16_t ReceiverPort(std::size_t receiver) const { return listeners[receiver].Port(); }
    std::uint16_t HttpPort() const { return listeners[HttpListener].Port(); }

    // Serves until a byte can be read from stopDescriptor, which the caller owns. Throws if the
    // system can't wait for the sockets.
    void Run(int stopDescriptor);

  private:
    static constexpr std::size_t HttpListener = 7;
    static constexpr std::size_t MostPeers = 256;

    void WaitAndServe(int stopDescriptor, bool& stopped);
    int WaitMilliseconds(TimePoint now) const;
    void AcceptFrom(std::size_t listener, TimePoint now);
    void ReadFrom(Peer& peer, TimePoint now);
    void TakeRequest(Peer& peer, TimePoint now);
    void Answer(Peer& peer, const std::string& head, TimePoint now);
    void WriteTo(Peer& peer, TimePoint now);
    void Advance(Peer& peer, TimePoint now);
    void Say(const std::string& line) const;

    Options options;
    Band band;
    std::array<Listener, 8> listeners;
    PageSettings pages;
    std::vector<std::unique_ptr<Peer>> peers;
    TimePoint acceptAgainAt; // after the system ran out of descriptors
};

} // namespace larkspool::demo
