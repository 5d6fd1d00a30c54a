#pragma once

#include "platform/TCPServer.h"
#include "remote/RigCommand.h"
#include "remote/RigLines.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>

namespace larkspool {

// Listens for programs that use rig control, and passes on their commands. Owned by the console.
// Each peer has a share of the program's time: what it sends beyond its share waits on its side
// until the next tick, so that no flood of commands interrupts the sound or fills the link to the
// receiver. The connection to a peer that sends too long a line, or a browser's request, is closed.
class RigServer {
  public:
    static constexpr int Port = 4532;
    static constexpr std::size_t MostPeers = 8; // a further one is disconnected
    // Per peer and tick: a line and a query cost 1 each, a change costs 10.
    static constexpr int Share = 200;

    // obey carries out a command; its result is sent back unchanged.
    RigServer(std::unique_ptr<TCPServer> listener,
              std::function<std::string(const RigCommand&)> obey);

    int Open();   // the system's error code; 0: success
    void Close(); // disconnects all peers
    void Tick();  // call about ten times per second

  private:
    struct Peer {
        std::unique_ptr<TCPPeer> link;
        RigLines lines;
        int share = Share;
        bool hasQuit = false;
    };

    void Accept(std::unique_ptr<TCPPeer> link);
    void Serve(Peer& peer);
    static bool Receive(Peer& peer);
    std::string Obey(Peer& peer, std::string_view line);
    void Sweep();

    std::unique_ptr<TCPServer> server;
    std::function<std::string(const RigCommand&)> obeyed;
    std::list<Peer> peers; // a list, because their handlers hold references to them
};

} // namespace larkspool
