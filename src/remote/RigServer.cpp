#include "remote/RigServer.h"

#include "remote/RigReply.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace larkspool {

namespace {

int Cost(RigVerb verb) {
    switch (verb) {
    case RigVerb::SetFrequency:
    case RigVerb::SetMode:
    case RigVerb::SetLevel:
    case RigVerb::SetFunction:
    case RigVerb::StartRecording:
    case RigVerb::StopRecording:
    case RigVerb::DumpState: // its answer is long
    case RigVerb::GetRigInfo:
        return 10;
    default:
        return 1;
    }
}

// A web page can make the user's browser send any bytes to this computer, but the browser always
// sends its own request first.
bool IsFromBrowser(std::string_view line) { return line.find(" HTTP/") != std::string_view::npos; }

} // namespace

RigServer::RigServer(std::unique_ptr<TCPServer> listener,
                     std::function<std::string(const RigCommand&)> obey)
    : server(std::move(listener)), obeyed(std::move(obey)) {
    server->accepted = [this](std::unique_ptr<TCPPeer> link) { Accept(std::move(link)); };
}

int RigServer::Open() {
    server->Listen(Port);
    return server->LastErrorCode();
}

void RigServer::Close() {
    server->Close();
    peers.clear();
}

void RigServer::Tick() {
    for (Peer& peer : peers) {
        peer.share = std::min(peer.share + Share, Share);
        Serve(peer);
    }
    Sweep();
}

void RigServer::Accept(std::unique_ptr<TCPPeer> link) {
    Sweep();
    if (peers.size() >= MostPeers) {
        return;
    }
    Peer& peer = peers.emplace_back();
    peer.link = std::move(link);
    peer.link->dataAvailable = [this, &peer] { Serve(peer); };
}

void RigServer::Serve(Peer& peer) {
    std::string answers;
    while (peer.share > 0 && !peer.hasQuit) {
        if (const auto line = peer.lines.Take()) {
            answers += Obey(peer, *line);
        } else if (peer.lines.IsTooLong()) {
            answers += RigReplyText({}, {RigReply::Code::Invalid});
            peer.hasQuit = true;
        } else if (!Receive(peer)) {
            break;
        }
    }
    if (!answers.empty()) {
        peer.link->Write(answers);
    }
    if (peer.hasQuit) {
        peer.link->Close();
    }
}

bool RigServer::Receive(Peer& peer) {
    std::array<std::uint8_t, RigLines::Longest + 1> bytes{};
    const std::size_t count = peer.link->Read(std::span(bytes).first(peer.lines.Room()));
    peer.lines.Add({reinterpret_cast<const char*>(bytes.data()), count});
    return count > 0;
}

std::string RigServer::Obey(Peer& peer, std::string_view line) {
    --peer.share;
    peer.hasQuit = IsFromBrowser(line);
    std::string answers;
    while (!peer.hasQuit) {
        const auto command = TakeRigCommand(line);
        if (!command) {
            break;
        }
        peer.share -= Cost(command->verb);
        peer.hasQuit = command->verb == RigVerb::Quit;
        answers += obeyed(*command);
    }
    return answers;
}

// Removes closed peers, but only after all their commands: a peer with some share left has no
// command that waits.
void RigServer::Sweep() {
    std::erase_if(peers, [](const Peer& peer) {
        return !peer.link->IsOpen() && (peer.hasQuit || peer.share > 0);
    });
}

} // namespace larkspool
