#include "audio/SoundFrame.h"

#include "platform/ByteOrder.h"
#include "support/VirtualReceiver.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(SoundFrame, TheHeaderMixesTwoByteOrders) {
    const auto header = ReadSoundHeader(SoundBody(0x01020304, {}, 270, 200));
    ASSERT_TRUE(header);
    EXPECT_EQ(header->flags, 200);
    EXPECT_EQ(header->sequence, 0x01020304U);
    EXPECT_NEAR(header->sMeter, -100.0, 1e-9);
    EXPECT_NEAR(ReadSoundHeader(SoundBody(0xFFFFFFFF, {}, 65535))->sMeter, 6426.5, 1e-9);
    EXPECT_EQ(ReadSoundHeader(SoundBody(0xFFFFFFFF, {}))->sequence, 0xFFFFFFFFU);
}

TEST(SoundFrame, AFrameTooShortForItsHeaderIsNone) {
    const std::string body = SoundBody(1, {});
    for (std::size_t size = 0; size < body.size(); ++size) {
        EXPECT_FALSE(ReadSoundHeader(std::string_view(body).substr(0, size))) << size;
    }
}

TEST(SoundFrame, SamplesArriveAsTheyWereSent) {
    const std::vector<std::int16_t> samples = {0, 1, -1, 256, -32768, 32767};
    const MemoryBlock block = SoundSamples(SoundBody(0, samples) + "x");
    ASSERT_EQ(block.Size(), samples.size() * 2 + 1) << "an odd last byte comes along";
    for (std::size_t i = 0; i < samples.size(); ++i) {
        EXPECT_EQ(block.Int16(2 * i, NativeByteOrder), samples[i]);
    }
    EXPECT_EQ(block.UInt8(samples.size() * 2), 'x');
}

TEST(SoundFrame, OnlyTheFillerOfOnesIsQuiet) {
    const auto quiet = [](const std::vector<std::int16_t>& samples) {
        return QuietSoundData(SoundSamples(SoundBody(0, samples)), samples.size());
    };
    EXPECT_TRUE(quiet({1, 1, 1, 1}));
    EXPECT_TRUE(quiet({}));
    EXPECT_FALSE(quiet({0, 0, 0}));
    EXPECT_FALSE(quiet({1, 1, 256}));
    EXPECT_FALSE(quiet({1, -1, 1}));
}

} // namespace
} // namespace larkspool
