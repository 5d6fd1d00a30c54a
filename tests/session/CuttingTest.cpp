#include "session/RecordingFixture.h"

namespace larkspool {
namespace {

// A link that breaks at any byte of the first four thousand, while a recording is armed or runs.
class Cutting : public RecordingFixture {
  protected:
    static constexpr std::size_t FirstBytes = 4096;

    Cutting() {
        Start();
        Console().CheckBoxReconnect.SetValue(true);
        const std::string reply = "HTTP/1.1 101 Switching Protocols\r\n\r\n";
        said = waterfallSaid = reply;
        replyEnd = reply.size();
        said += ServerFrame("MSG audio_init=0 audio_rate=12000") + ServerFrame("ping", 9);
        rateEnd = said.size();
        for (unsigned char seed = 0; said.size() < FirstBytes; ++seed) {
            const std::string little(2 * FrameSamples, static_cast<char>(seed + 2));
            said += ServerFrame("SND" + SoundBody(seed, {}) + little); // both bytes alike
            frames.push_back({said.size(), little});
            said += ServerFrame("W/F" + std::string(100, 'w'));
        }
        while (waterfallSaid.size() < FirstBytes) {
            waterfallSaid += ServerFrame("W/F" + std::string(1037, 'w'));
        }
    }

    // A session that records from its first frame on.
    void Arm() {
        Console().ConnectAndRecord("sdr.example.net:8073", "10000", "am", "5000");
        desktop.Advance(1);
        ASSERT_TRUE(Audio().socket.IsConnecting()) << "the console can't connect any more";
        AcceptLinks();
    }

    void Deliver(VirtualTCPSocket& link, std::string_view bytes) {
        link.Deliver(bytes.substr(0, replyEnd)); // what comes with the reply goes with it
        desktop.Advance(0);
        if (bytes.size() > replyEnd) {
            link.Deliver(bytes.substr(replyEnd));
            desktop.Advance(0);
        }
    }

    std::string SoundBefore(std::size_t cut) const {
        std::string sound;
        for (const auto& [end, samples] : frames) {
            sound += end <= cut ? samples : "";
        }
        return sound;
    }

    struct Frame {
        std::size_t end; // in what is said
        std::string samples;
    };
    std::string said;          // by the receiver, on the audio link
    std::string waterfallSaid; // on the other
    std::size_t replyEnd = 0;
    std::size_t rateEnd = 0;
    std::vector<Frame> frames;
};

TEST_F(Cutting, TheAudioLinkAnywhereKeepsTheRecordingUpToThere) {
    for (std::size_t cut = 0; cut <= FirstBytes; ++cut) {
        SCOPED_TRACE(cut);
        Arm();
        Deliver(Audio().socket, std::string_view(said).substr(0, cut));
        Audio().socket.Fail();
        desktop.Advance(0);
        if (cut < rateEnd && Recordings().empty()) {
            continue; // nothing had begun
        }
        ASSERT_EQ(OnlySound(), SoundBefore(cut));
        ForgetRecordings();
    }
}

TEST_F(Cutting, TheWaterfallLinkAnywhereCostsTheWaterfallAlone) {
    for (std::size_t cut = 0; cut <= FirstBytes; ++cut) {
        SCOPED_TRACE(cut);
        Arm();
        Deliver(Audio().socket, said);
        Deliver(Waterfall().socket, std::string_view(waterfallSaid).substr(0, cut));
        Waterfall().socket.Fail();
        desktop.Advance(0);
        const std::string later = SendFrames(1);
        Console().PushButtonDisconnect.Push();
        ASSERT_EQ(OnlySound(), SoundBefore(said.size()) + later);
        ForgetRecordings();
    }
}

} // namespace
} // namespace larkspool
