#include "remote/AudioStream.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(AudioStreaming, TheNumberGoesToItsLastAndStartsOver) {
    AudioStream stream;
    stream.Init();
    const MemoryBlock sound(1024);
    for (unsigned i = 0; i < 65538; ++i) {
        stream.StreamSoundBlock(512, sound);
        const MemoryBlock* block = stream.FirstReadyToSend();
        ASSERT_NE(block, nullptr);
        ASSERT_EQ(block->UInt16(1024, ByteOrder::LittleEndian), i % 65536);
        ASSERT_EQ(block->UInt16(1026, ByteOrder::LittleEndian), 0) << "a used block";
        stream.FirstIsSent();
        ASSERT_EQ(stream.FirstReadyToSend(), nullptr);
    }
}

} // namespace
} // namespace larkspool
