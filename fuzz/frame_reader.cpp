// Any bytes as what a receiver sends on a link, in pieces of any size: the reader finds the frames,
// the pings and the end that a reader of the whole stream finds, wherever it is cut. The first byte
// counts the lengths of the pieces that follow it; its top bit starts at the ring's far end.
#include "Input.h"
#include "link/WebsocketsClass.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <string>
#include <vector>

namespace larkspool::fuzz {
namespace {

struct Outcome {
    std::vector<std::string> frames; // tag, a slash, body; or a pong
    bool lost = false;               // the stream has lost its framing
    std::size_t left = 0;            // bytes that are no whole frame yet

    bool operator==(const Outcome&) const = default;
};

Outcome ReadWhole(std::string_view stream) {
    constexpr std::uint64_t Longest = WebsocketsClass::FifoSize; // no frame is as long
    Outcome outcome;
    while (true) {
        Input rest(stream);
        const unsigned opcode = rest.Byte() & 0x0FU;
        const unsigned second = rest.Byte();
        std::uint64_t length = second & 0x7FU;
        const std::size_t extra = length < 126 ? 0 : length == 126 ? 2 : 8;
        const std::size_t header = 2 + extra + (second >= 0x80U ? 4 : 0);
        for (std::size_t i = 0; i < extra; ++i) {
            length = (i == 0 ? 0 : length * 256) + rest.Byte();
        }
        outcome.lost =
            stream.size() >= 2 + extra && (length >= Longest || header + length >= Longest);
        outcome.left = outcome.lost ? 0 : stream.size();
        if (outcome.lost || stream.size() < header || stream.size() - header < length) {
            return outcome;
        }
        std::string payload(stream.substr(header, length));
        stream.remove_prefix(header + length);
        outcome.frames.push_back(opcode == 9
                                     ? "PONG " + payload.substr(0, 125)
                                     : payload.insert(std::min<std::size_t>(3, length), "/"));
    }
}

// A link on a connected socket.
class Reader {
  public:
    explicit Reader(Desktop& desktop) : link(desktop, random) {
        socket.Connect();
        socket.Accept();
        link.Init(socket);
    }

    // First a frame that ends a few bytes before the ring does, together with what follows, so that
    // the ring isn't empty when it comes to its end.
    void FeedAtTheEndOfTheRing(std::string_view bytes) {
        static const std::string filler =
            ServerFrame(std::string(WebsocketsClass::FifoSize - 40, 'x'));
        socket.Deliver(filler + std::string(bytes));
        Require(link.ReadNewData() == filler.size() + bytes.size(), "the ring has room");
        Require(link.WebsocketRead(tag, body) && body.size() > filler.size() - 20,
                "a large frame comes whole");
        Feed({});
    }

    void Feed(std::string_view bytes) {
        socket.Deliver(bytes);
        do {
            while (link.WebsocketRead(tag, body)) {
                const auto pongs = CommandsIn(socket.TakeSent());
                outcome.frames.push_back(pongs.empty() ? tag + "/" + body : pongs.front());
            }
        } while (link.ReadNewData() > 0);
    }

    Outcome Finish() {
        outcome.lost = !socket.IsConnected();
        outcome.left = link.BytesInInputBuffer();
        return outcome;
    }

  private:
    EventQueue queue;
    Random random{1};
    VirtualTCPSocket socket{queue};
    WebsocketsClass link;
    std::string tag;
    std::string body;
    Outcome outcome;
};

} // namespace

void FrameReader(std::string_view bytes) {
    static VirtualDesktop desktop;
    Input input(bytes);
    const unsigned first = input.Byte();
    Input lengths(input.Piece(first & 0x7FU));
    const std::string_view stream = input.Rest();

    Reader reader(desktop);
    Input rest(stream);
    if (first >= 0x80U) {
        reader.FeedAtTheEndOfTheRing(rest.Piece(20));
    }
    while (!lengths.Empty()) {
        reader.Feed(rest.Piece(lengths.Byte()));
    }
    reader.Feed(rest.Rest());
    Require(reader.Finish() == ReadWhole(stream), "pieces give what the whole stream gives");
    desktop.queue.Clear();
}

} // namespace larkspool::fuzz
