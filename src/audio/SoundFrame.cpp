#include "audio/SoundFrame.h"

#include "platform/ByteOrder.h"

#include <utility>

namespace larkspool {

namespace {

MemoryBlock InNativeOrder(std::string_view bigEndian) {
    MemoryBlock block(bigEndian);
    if constexpr (NativeByteOrder == ByteOrder::LittleEndian) {
        std::uint8_t* bytes = block.Data();
        for (std::size_t i = 0; i + 1 < block.Size(); i += 2) {
            std::swap(bytes[i], bytes[i + 1]);
        }
    }
    return block;
}

} // namespace

std::optional<SoundFrame> ReadSoundFrame(std::string_view frame) {
    if (frame.size() < SoundFrame::HeaderSize) {
        return std::nullopt;
    }
    const auto byte = [frame](std::size_t offset) {
        return static_cast<std::uint32_t>(static_cast<std::uint8_t>(frame[offset]));
    };
    return SoundFrame{
        .flags = static_cast<int>(byte(0)),
        .sequence = byte(1) | byte(2) << 8U | byte(3) << 16U | byte(4) << 24U,
        .sMeter = static_cast<double>(byte(5) << 8U | byte(6)) * 0.1 - 127.0,
        .samples = InNativeOrder(frame.substr(SoundFrame::HeaderSize)),
    };
}

bool IsPossibleRate(double rate) {
    constexpr double Lowest = 1;
    constexpr double Highest = 250'000;
    return rate >= Lowest && rate <= Highest;
}

bool QuietSoundData(const MemoryBlock& block, std::size_t sampleCount) {
    for (std::size_t i = 0; i < sampleCount; ++i) {
        if (block.Int16(2 * i, NativeByteOrder) != 1) {
            return false;
        }
    }
    return true;
}

} // namespace larkspool
