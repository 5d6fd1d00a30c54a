// Any bytes as what a receiver sends on a link, in pieces of any size: the reader finds the frames,
// the pings and the end that a reader of the whole stream finds, wherever it is cut. The first byte
// counts the lengths of the pieces that follow it; its top bit starts at the ring's far end.
#include "Input.h"
#include "link/WebsocketsClass.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace larkspool::fuzz {
namespace {

struct Outcome {
    std::vector<std::pair<std::string, std::string>> frames; // tag, body
    std::vector<std::string> pongs;
    bool lost = false;    // the stream has lost its framing
    std::size_t left = 0; // bytes that are no whole frame yet

    bool operator==(const Outcome&) const = default;
};

// The payload's length, taken off the stream with the rest of the header; nothing if the header
// isn't there whole.
std::optional<std::uint64_t> TakeLength(std::string_view& stream) {
    Input header(reinterpret_cast<const std::uint8_t*>(stream.data()), stream.size());
    header.Byte();
    const unsigned second = header.Byte();
    std::uint64_t length = second & 0x7FU;
    const std::size_t extra = length < 126 ? 0 : length == 126 ? 2 : 8;
    if (stream.size() < 2 + extra) {
        return std::nullopt;
    }
    if (extra > 0) {
        length = 0;
        for (std::size_t i = 0; i < extra; ++i) {
            length = length * 256 + header.Byte();
        }
    }
    const std::size_t size = 2 + extra + (second >= 0x80U ? 4 : 0);
    constexpr std::uint64_t Never = WebsocketsClass::FifoSize;
    if (length >= Never || length + size >= Never) {
        return Never;
    }
    if (stream.size() < size + length) {
        return std::nullopt;
    }
    stream.remove_prefix(size);
    return length;
}

Outcome ReadWhole(std::string_view stream) {
    Outcome outcome;
    while (stream.size() >= 2) {
        const unsigned opcode = static_cast<std::uint8_t>(stream[0]) & 0x0FU;
        const auto length = TakeLength(stream);
        if (!length) {
            break;
        }
        if (*length == WebsocketsClass::FifoSize) {
            outcome.lost = true;
            return outcome;
        }
        const std::string payload(stream.substr(0, *length));
        stream.remove_prefix(payload.size());
        if (opcode == 9) {
            outcome.pongs.push_back("PONG " + payload.substr(0, 125));
        } else {
            outcome.frames.emplace_back(payload.substr(0, 3),
                                        payload.substr(std::min<std::size_t>(3, payload.size())));
        }
    }
    outcome.left = stream.size();
    return outcome;
}

// A link on a connected socket.
class Reader {
  public:
    explicit Reader(Desktop& desktop) : link(desktop, random) {
        socket.Connect();
        socket.Accept();
        link.Init(socket);
    }

    void FeedBehindFiller(std::string_view filler, std::string_view bytes) {
        socket.Deliver(filler);
        socket.Deliver(bytes);
        Require(link.ReadNewData() == filler.size() + bytes.size(), "the ring has room");
        Require(link.WebsocketRead(tag, body) && body.size() > filler.size() - 20,
                "a large frame comes whole");
        Feed({});
    }

    void Feed(std::string_view bytes) {
        socket.Deliver(bytes);
        do {
            while (link.WebsocketRead(tag, body)) {
                if (!TakePongs()) {
                    outcome.frames.emplace_back(tag, body);
                }
            }
        } while (link.ReadNewData() > 0);
    }

    Outcome Finish() {
        outcome.lost = !socket.IsConnected();
        outcome.left = link.BytesInInputBuffer();
        return std::move(outcome);
    }

  private:
    bool TakePongs() {
        const auto pongs = CommandsIn(socket.TakeSent());
        outcome.pongs.insert(outcome.pongs.end(), pongs.begin(), pongs.end());
        return !pongs.empty();
    }

    EventQueue queue;
    Random random{1};
    VirtualTCPSocket socket{queue};
    WebsocketsClass link;
    std::string tag;
    std::string body;
    Outcome outcome;
};

// A frame that ends a few bytes before the ring does.
const std::string& Filler() {
    static const std::string frame = ServerFrame(std::string(WebsocketsClass::FifoSize - 40, 'x'));
    return frame;
}

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    static VirtualDesktop desktop;
    fuzz::Input input(data, size);
    const unsigned first = input.Byte();
    const std::string_view lengths = input.Piece(first & 0x7FU);
    const std::string_view stream = input.Rest();

    fuzz::Reader reader(desktop);
    std::string_view rest = stream;
    if (first >= 0x80U) {
        // Together with what follows, so that the ring isn't empty when it comes to its end.
        reader.FeedBehindFiller(fuzz::Filler(), rest.substr(0, 20));
        rest.remove_prefix(std::min<std::size_t>(rest.size(), 20));
    }
    for (const char length : lengths) {
        const auto piece = rest.substr(0, static_cast<std::uint8_t>(length));
        reader.Feed(piece);
        rest.remove_prefix(piece.size());
    }
    reader.Feed(rest);
    fuzz::Require(reader.Finish() == fuzz::ReadWhole(stream),
                  "pieces give what the whole stream gives");
    desktop.queue.Clear();
    return 0;
}
