#include "audio/WavFile.h"

#include "audio/WavHeader.h"
#include "platform/BinaryStream.h"

#include <algorithm>
#include <string_view>

namespace larkspool {

namespace {

// Begins as the header of the end and goes on as the one of the start.
bool IsTorn(std::string_view header, std::string_view end, std::string_view start) {
    const auto differ = std::mismatch(header.begin(), header.end(), end.begin()).first;
    const auto written = static_cast<std::size_t>(differ - header.begin());
    return header.substr(written) == start.substr(written);
}

} // namespace

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
    shape.toldSamples = stream->ReadUInt32() / 2;
    shape.wholeSamples = static_cast<std::int64_t>((stream->Length() - WavHeaderSize) / 2);
    if (header == WavHeader(shape.sampleRate, shape.toldSamples)) {
        return shape;
    }
    if (IsTorn(header, WavHeader(shape.sampleRate, shape.wholeSamples),
               WavHeader(shape.sampleRate, 0))) {
        shape.toldSamples = 0;
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
