// Counts what the program allocates for an event and while it is flooded.
#include "support/Allocations.h"
#include "support/ConsoleFixture.h"

#include <array>
#include <random>

namespace larkspool {
namespace {

const Allocations& counted = Allocations::OfThisThread();

using Memory = ConsoleFixture;

TEST_F(Memory, RaisingAnEventCostsNothing) {
    std::array<std::int64_t, 8> values{};
    std::size_t raised = 0;
    const std::int64_t before = counted.made;
    desktop.Raise([values, &raised] { raised += values.size(); });
    EXPECT_EQ(counted.made, before);
    EXPECT_EQ(raised, values.size());
}

TEST_F(Memory, AFloodOfDatagramsLeavesItFlat) {
    constexpr std::int64_t MostGrowth = 512 * 1024; // the log's 2,000 rows have different lengths
    desktop.sound.keepsSound = false;
    desktop.sound.sent = [](std::int64_t, std::string_view) {};
    Start();
    Console().CheckBoxNetwork.SetValue(true);
    std::mt19937 chance(7);
    const std::string words[] = {"", "", "ofreq:", "mode:", "staud:", "address:", "lowcut:"};
    const auto flood = [&](int datagrams) {
        for (int i = 1; i <= datagrams; ++i) {
            std::string text = words[chance() % 7] + std::string(chance() % 64, '\0');
            for (std::size_t at = 8; at < text.size(); ++at) {
                text[at] = static_cast<char>(chance());
            }
            desktop.udpSockets.at(0)->Deliver(std::move(text));
            if (i % 100 == 0) {
                desktop.Advance(0.001);
            }
        }
    };
    flood(10'000);
    const std::int64_t held = counted.bytes;
    flood(100'000);
    EXPECT_LE(counted.bytes - held, MostGrowth);
}

} // namespace
} // namespace larkspool
