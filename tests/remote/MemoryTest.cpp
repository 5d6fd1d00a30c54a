// Counts what the program allocates while it streams and while it is flooded.
#include "support/Allocations.h"
#include "support/ConsoleFixture.h"

#include <array>
#include <random>

namespace larkspool {
namespace {

const Allocations& counted = Allocations::OfThisThread();

// Takes everything and keeps nothing.
class ForgetfulSoundLibrary : public SoundLibrary {
  public:
    std::int64_t BuildSoundDeviceList() override { return 0; }
    void GetSoundDeviceInfo(std::int64_t, void*, char*) override {}
    void StartSoundOutput(std::int64_t, double) override {}
    void StopSoundOutput() override {}
    void SetSoundOutputVolume(double) override {}
    void OutputSoundBlock(std::int64_t, const void*, std::int64_t) override {}
    void SendUdpCommand(const void*, std::int64_t length, std::int64_t) override {
        blocks += length == 1028 ? 1 : 0;
    }

    int blocks = 0;
};

class ForgetfulDesktop : public VirtualDesktop {
  public:
    SoundLibrary& Sound() override { return library; }

    ForgetfulSoundLibrary library;
};

class Memory : public ::testing::Test {
  protected:
    Memory() {
        app.Event_Open();
        app.Console().CheckBoxNetwork.SetValue(true);
        app.Console().TextFieldAddress.SetText("sdr.example.net");
        app.Console().PushButtonConnect.Push();
        desktop.Advance(1);
        Audio().socket.Accept();
        desktop.Advance(0);
        Audio().Upgrade();
        Audio().Message(" audio_init=0 audio_rate=12000");
        desktop.Advance(0);
    }

    VirtualReceiver Audio() { return VirtualReceiver(*desktop.tcpSockets.at(0)); }
    VirtualUDPSocket& Peer() { return *desktop.udpSockets.at(0); }

    // What it takes to receive and play so many frames of 700 samples, at their pace.
    std::int64_t AllocationsFor(int frames) {
        const std::vector<std::int16_t> samples(700, 5);
        const std::int64_t before = counted.made;
        for (int i = 0; i < frames; ++i) {
            Audio().Sound(sequence++, samples);
            desktop.Advance(0.06); // whole ticks of every timer
        }
        return counted.made - before;
    }

    ForgetfulDesktop desktop;
    App app{desktop, {}};
    std::uint32_t sequence = 0;
};

TEST_F(Memory, StreamingAllocatesNothingBeyondWhatHearingDoes) {
    Peer().Deliver("staud:1");
    desktop.Advance(0);
    AllocationsFor(300); // as many blocks as it takes are there now
    const int before = desktop.library.blocks;
    EXPECT_GT(before, 400);
    const std::int64_t streaming = AllocationsFor(500);
    EXPECT_EQ(desktop.library.blocks - before, 500 * 700 / 512);
    Peer().Deliver("staud:0");
    desktop.Advance(0);
    EXPECT_EQ(streaming, AllocationsFor(500));
}

TEST_F(Memory, RaisingAnEventCostsNothing) {
    std::array<std::int64_t, 8> values{};
    const std::int64_t before = counted.made;
    desktop.Raise([values, this] { sequence += static_cast<std::uint32_t>(values.size()); });
    EXPECT_EQ(counted.made, before);
    EXPECT_EQ(sequence, values.size());
}

TEST_F(Memory, AFloodOfDatagramsLeavesItFlat) {
    std::mt19937 chance(7);
    const std::string words[] = {"", "", "ofreq:", "mode:", "staud:", "address:", "lowcut:"};
    const auto flood = [&](int datagrams) {
        for (int i = 0; i < datagrams; ++i) {
            std::string text = words[chance() % 7];
            text.resize(text.size() + chance() % 64);
            for (std::size_t at = 8; at < text.size(); ++at) {
                text[at] = static_cast<char>(chance());
            }
            Peer().Deliver(std::move(text));
            if (i % 100 == 99) {
                desktop.Advance(0.001);
            }
        }
    };
    flood(10'000);
    const std::int64_t held = counted.made - counted.freed;
    flood(100'000);
    // A row of the log is one or two pieces, and there are 2,000 of them.
    EXPECT_LE(std::abs(counted.made - counted.freed - held), 2000);
    EXPECT_EQ(app.Console().Listbox1.ListCount(), 2000);
    Peer().Deliver("ofreq:7055000");
    desktop.Advance(0);
    EXPECT_EQ(app.Console().TextFieldFreq.Text(), "7055") << "the console still listens";
}

} // namespace
} // namespace larkspool
