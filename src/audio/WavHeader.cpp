#include "audio/WavHeader.h"

#include "platform/BinaryStream.h"
#include "platform/ByteOrder.h"

#include <algorithm>
#include <limits>

namespace larkspool {

std::string WavHeader(std::int64_t sampleRate, std::int64_t samples) {
    constexpr std::uint32_t BytesPerSample = 2;
    constexpr std::uint32_t SizeBehindFirstFields = WavHeaderSize - 8;
    constexpr std::int64_t MostSamples =
        (std::numeric_limits<std::uint32_t>::max() - SizeBehindFirstFields) / BytesPerSample;
    const auto rate = static_cast<std::uint32_t>(sampleRate);
    const auto dataBytes =
        static_cast<std::uint32_t>(std::clamp<std::int64_t>(samples, 0, MostSamples)) *
        BytesPerSample;
    BinaryStream header;
    header.SetByteOrder(ByteOrder::LittleEndian);
    header.WriteString("RIFF");
    header.WriteUInt32(SizeBehindFirstFields + dataBytes);
    header.WriteString("WAVEfmt ");
    header.WriteUInt32(16); // bytes of the format
    header.WriteUInt16(1);  // PCM
    header.WriteUInt16(1);  // channels
    header.WriteUInt32(rate);
    header.WriteUInt32(rate * BytesPerSample);
    header.WriteUInt16(BytesPerSample);
    header.WriteUInt16(16); // bits a sample
    header.WriteString("data");
    header.WriteUInt32(dataBytes);
    return header.TakeBytes();
}

} // namespace larkspool
