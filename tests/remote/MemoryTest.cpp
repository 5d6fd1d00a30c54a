// Counts what the program allocates for an event and while it is flooded.
#include "support/Allocations.h"
#include "support/ConsoleFixture.h"

#include <array>
#include <random>

namespace larkspool {
namespace {

const Allocations& counted = Allocations::OfThisThread();

class Memory : public ConsoleFixture {
  protected:
    Memory() {
        desktop.sound.keepsSound = false;
        desktop.sound.sent = [](std::int64_t, std::string_view) {};
        Start();
        Console().CheckBoxNetwork.SetValue(true);
    }

    VirtualUDPSocket& Peer() { return *desktop.udpSockets.at(0); }
};

TEST_F(Memory, RaisingAnEventCostsNothing) {
    std::array<std::int64_t, 8> values{};
    std::size_t raised = 0;
    const std::int64_t before = counted.made;
    desktop.Raise([values, &raised] { raised += values.size(); });
    EXPECT_EQ(counted.made, before);
    EXPECT_EQ(raised, values.size());
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
    EXPECT_EQ(Console().Listbox1.ListCount(), 2000);
    Peer().Deliver("ofreq:7055000");
    desktop.Advance(0);
    EXPECT_EQ(Console().TextFieldFreq.Text(), "7055") << "the console still listens";
}

} // namespace
} // namespace larkspool
