#pragma once

#include "platform/MemoryBlock.h"

#include <cstddef>
#include <cstdint>
#include <list>

namespace larkspool {

// Cuts the receiver's sound into the blocks that go out on the network, numbers them and keeps them
// until they are sent. Owned by the console. The lists hand their nodes to one another, so that
// once there are blocks enough nothing is allocated any more.
//
// A block: 1024 bytes of sound, as it stands in memory; the number of the block, low byte first;
// two bytes of zero.
class AudioStream {
  public:
    static constexpr std::size_t SoundBytes = 1024;
    static constexpr std::size_t BlockBytes = 1028;
    static constexpr std::size_t MostWaiting = 60; // some 2.5 s at 12,000 samples a second

    // Makes the block to be filled; the next block finished is number 0.
    void Init();
    bool IsReady() const { return !streamingDataMB.empty(); }

    // Before Init the samples are lost.
    void StreamSoundBlock(std::size_t sampleCount, const MemoryBlock& samples);

    // The oldest full block, null if none waits.
    const MemoryBlock* FirstReadyToSend() const;
    void FirstIsSent(); // its block is free for new sound

    bool isStreaming = false; // a peer has asked for sound

  private:
    void FinishBlock();

    std::list<MemoryBlock> streamingDataMB;             // the one being filled; none before Init
    std::size_t streamingDataMBCurrentLength = 0;       // bytes of sound in it
    std::list<MemoryBlock> streamingDataMBsReadyToSend; // the newest, in order
    std::list<MemoryBlock> streamingDataMBsUsed;
    std::uint8_t streamingSequenceLSB = 0; // of the next block
    std::uint8_t streamingSequenceMSB = 0;
};

} // namespace larkspool
