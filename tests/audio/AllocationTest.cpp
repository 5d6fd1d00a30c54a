// Counts what a stream of frames allocates, so this test is a program of its own.
#include "audio/SoundFrame.h"
#include "link/LinkFixture.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t allocations = 0;

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace larkspool {
namespace {

class FrameAllocations : public LinkFixture {};

TEST_F(FrameAllocations, AFrameCostsItsSamplesBlockAndNothingElse) {
    const std::string frame = ServerFrame("SND" + SoundBody(1, std::vector<std::int16_t>(512)));
    std::string tag;
    std::string body;
    const auto takeOne = [&] {
        link.ReadNewData();
        ASSERT_TRUE(link.WebsocketRead(tag, body));
        ASSERT_TRUE(ReadSoundHeader(body));
        ASSERT_EQ(SoundSamples(body).Size(), 1024U);
    };
    for (int round = 0; round < 50; ++round) {
        socket.Deliver(frame);
        allocations = 0;
        takeOne();
        if (round > 0) { // the first makes room for the body
            EXPECT_EQ(allocations, 1U);
        }
    }
}

} // namespace
} // namespace larkspool
