#include "remote/AudioStream.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace larkspool {
namespace {

class AudioStreaming : public ::testing::Test {
  protected:
    AudioStreaming() { stream.Init(); }

    // So many samples, which count on from the ones before.
    void Feed(std::size_t count) {
        MemoryBlock samples(count * 2);
        for (std::size_t i = 0; i < count; ++i) {
            samples.SetInt16(i * 2, next++, NativeByteOrder);
        }
        stream.StreamSoundBlock(count, samples);
    }

    std::vector<MemoryBlock> Take() {
        std::vector<MemoryBlock> blocks;
        while (const MemoryBlock* block = stream.FirstReadyToSend()) {
            blocks.push_back(*block);
            stream.FirstIsSent();
        }
        return blocks;
    }

    static unsigned Sequence(const MemoryBlock& block) {
        return block.UInt16(1024, ByteOrder::LittleEndian);
    }
    static std::vector<std::int16_t> Sound(const MemoryBlock& block) {
        std::vector<std::int16_t> samples;
        for (std::size_t i = 0; i < 512; ++i) {
            samples.push_back(block.Int16(i * 2, NativeByteOrder));
        }
        return samples;
    }
    static std::vector<std::int16_t> From(std::int16_t first) {
        std::vector<std::int16_t> samples(512);
        std::iota(samples.begin(), samples.end(), first);
        return samples;
    }

    AudioStream stream;
    std::int16_t next = -300;
};

TEST_F(AudioStreaming, FramesOfAnySizeBecomeWholeNumberedBlocks) {
    Feed(512);
    auto blocks = Take();
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].Size(), 1028U);
    EXPECT_EQ(Sound(blocks[0]), From(-300));
    EXPECT_EQ(blocks[0].View(1024, 4), std::string(4, '\0'));
    Feed(700); // 188 stay in the block being filled
    Feed(0);
    Feed(323);
    ASSERT_EQ(Take().size(), 1U);
    Feed(1);
    Feed(1300);
    blocks = Take();
    ASSERT_EQ(blocks.size(), 3U);
    EXPECT_EQ(Sound(blocks[0]), From(-300 + 1024));
    EXPECT_EQ(Sound(blocks[2]), From(-300 + 2048));
    EXPECT_EQ(blocks[2].View(1024, 4), std::string("\4\0\0\0", 4));
}

TEST_F(AudioStreaming, TheNumberGoesToItsLastAndStartsOver) {
    std::vector<unsigned> numbers;
    for (int i = 0; i < 65538; ++i) {
        Feed(512);
        const auto blocks = Take();
        ASSERT_EQ(blocks.size(), 1U);
        ASSERT_EQ(Sequence(blocks[0]), static_cast<unsigned>(i) % 65536);
        ASSERT_EQ(blocks[0].View(1026, 2), std::string(2, '\0')) << "a used block";
    }
}

TEST_F(AudioStreaming, ACountBeyondTheSamplesReadsNoFurther) {
    MemoryBlock two(4);
    stream.StreamSoundBlock(1'000'000, two);
    Feed(510);
    EXPECT_EQ(Take().size(), 1U);
}

TEST_F(AudioStreaming, BeforeNetworkingNothingIsKept) {
    stream = AudioStream();
    EXPECT_FALSE(stream.IsReady());
    Feed(5000);
    EXPECT_TRUE(Take().empty());
}

TEST_F(AudioStreaming, OfWhatNobodySendsTheNewestIsKeptInOrder) {
    Feed(512 * 1700);
    Feed(100);
    const auto blocks = Take();
    ASSERT_EQ(blocks.size(), AudioStream::MostWaiting);
    for (unsigned i = 0; i < blocks.size(); ++i) {
        ASSERT_EQ(Sequence(blocks[i]), 200 + i);
    }
    Feed(412);
    const auto following = Take();
    ASSERT_EQ(following.size(), 1U);
    EXPECT_EQ(Sequence(following[0]), 1700U);
}

} // namespace
} // namespace larkspool
