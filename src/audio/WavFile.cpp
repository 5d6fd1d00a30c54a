#include "audio/WavFile.h"

#include "platform/BinaryStream.h"
#include "platform/ByteOrder.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace larkspool {

namespace {

// Whether the header begins like the one of the end and continues like the one of the start: the
// write of the last header stopped half-way.
bool IsTorn(std::string_view header, std::string_view end, std::string_view start) {
    const auto differ = std::mismatch(header.begin(), header.end(), end.begin()).first;
    const auto written = static_cast<std::size_t>(differ - header.begin());
    return header.substr(written) == start.substr(written);
}

} // namespace

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
    header.WriteUInt16(16); // bits per sample
    header.WriteString("data");
    header.WriteUInt32(dataBytes);
    return header.TakeBytes();
}

std::optional<WavFileShape> LookAtWavFile(const FolderItem& file) {
    constexpr std::uint64_t RateField = 24;
    constexpr std::uint64_t DataSizeField = 40;
    auto stream = BinaryStream::Open(file);
    if (!stream || stream->Length() < WavHeaderSize) {
        return std::nullopt;
    }
    stream->SetByteOrder(ByteOrder::LittleEndian);
    const std::string header = stream->ReadString(WavHeaderSize);
    WavFileShape shape;
    stream->SetPosition(RateField);
    shape.sampleRate = stream->ReadUInt32();
    stream->SetPosition(DataSizeField);
    shape.headerSamples = stream->ReadUInt32() / 2;
    shape.wholeSamples = static_cast<std::int64_t>((stream->Length() - WavHeaderSize) / 2);
    if (header == WavHeader(shape.sampleRate, shape.headerSamples)) {
        return shape;
    }
    if (IsTorn(header, WavHeader(shape.sampleRate, shape.wholeSamples),
               WavHeader(shape.sampleRate, 0))) {
        shape.headerSamples = 0;
        return shape;
    }
    return std::nullopt;
}

bool PatchWavSizes(const FolderItem& file, const WavFileShape& shape) {
    auto stream = BinaryStream::OpenForUpdate(file);
    return stream && stream->WriteString(WavHeader(shape.sampleRate, shape.wholeSamples)) &&
           stream->Close();
}

} // namespace larkspool
