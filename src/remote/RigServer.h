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

// Listens for programs that speak rig control, and passes on what they ask. Owned by the console.
// A peer has a share of the program's time: what it sends beyond that waits on its side until the
// next tick, so that no flood of commands keeps the sound from the user or fills the link to the
// receiver. A peer that sends a line that is too long, or a browser's request, is hung up on.
class RigServer {
  public:
    static constexpr int Port = 4532;
    static constexpr std::size_t MostPeers = 8; // one more is hung up on
    // Of a peer, a tick: a line and a question cost 1 each, a change 10.
    static constexpr int Share = 200;

    // obey does what is asked; its result goes back as it is.
    RigServer(std::unique_ptr<TCPServer> listener,
              std::function<std::string(const RigCommand&)> obey);

    int Open();   // the system's error code, 0 if all is well
    void Close(); // cuts the peers
    void Tick();  // to be called some ten times a second

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
    std::list<Peer> peers; // their handlers know their places
};

} // namespace larkspool
