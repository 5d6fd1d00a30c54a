// Any bytes as the bodies of audio frames: every sample reaches the listener and the network's
// blocks once, in order, and the queue of blocks stays bounded. Each frame has two bytes of length
// in front, so that several go into one run.
#include "Input.h"
#include "audio/SoundFrame.h"
#include "remote/AudioStream.h"

#include <string>

namespace larkspool::fuzz {
namespace {

void CheckHeader(const SoundFrame& read) {
    Require(read.flags >= 0 && read.flags <= 255, "flags are a byte");
    Require(read.sMeter >= -127.0 && read.sMeter <= 6426.5, "the meter is in its range");
}

// The frame's samples in native order, as bytes.
std::string CheckSamples(const MemoryBlock& block, std::string_view frame) {
    const std::string_view wire = frame.substr(SoundFrame::HeaderSize);
    Require(block.Size() == wire.size(), "no byte is lost or added");
    bool quiet = true;
    for (std::size_t i = 0; i + 1 < wire.size(); i += 2) {
        const int sample = static_cast<std::int16_t>(static_cast<std::uint8_t>(wire[i]) << 8 |
                                                     static_cast<std::uint8_t>(wire[i + 1]));
        Require(block.Int16(i, NativeByteOrder) == sample, "samples come big-endian");
        quiet = quiet && sample == 1;
    }
    Require(QuietSoundData(block, block.Size() / 2) == quiet, "ones, and only ones, are silence");
    return std::string(block.View(0, block.Size() / 2 * 2));
}

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    fuzz::Input input(data, size);
    AudioStream stream;
    stream.Init();
    std::string heard;
    while (!input.Empty()) {
        const std::size_t length = input.Byte() * std::size_t{256};
        const std::string_view frame = input.Piece(length + input.Byte());
        const auto read = ReadSoundFrame(frame);
        fuzz::Require(read.has_value() == (frame.size() >= SoundFrame::HeaderSize),
                      "a header needs its bytes");
        if (read) {
            fuzz::CheckHeader(*read);
            heard += fuzz::CheckSamples(read->samples, frame);
            stream.StreamSoundBlock(read->SampleCount(), read->samples);
        }
    }
    std::string sent;
    for (unsigned number = 0; const MemoryBlock* block = stream.FirstReadyToSend(); ++number) {
        fuzz::Require(block->Size() == AudioStream::BlockBytes, "blocks have one size");
        fuzz::Require(block->UInt16(AudioStream::SoundBytes, ByteOrder::LittleEndian) == number,
                      "blocks are numbered");
        sent += block->View(0, AudioStream::SoundBytes);
        stream.FirstIsSent();
    }
    fuzz::Require(heard.starts_with(sent), "what is sent is what was heard");
    fuzz::Require(heard.size() - sent.size() < AudioStream::SoundBytes, "whole blocks don't wait");
    return 0;
}
