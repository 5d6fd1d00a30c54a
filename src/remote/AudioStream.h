#pragma once

#include "platform/MemoryBlock.h"

#include <cstddef>
#include <cstdint>
#include <list>

namespace larkspool {

// Cuts the receiver's sound into blocks for the network, numbers them and keeps them until they are
// sent. Owned by the console. The lists pass their nodes to each other, so that no memory is
// allocated once there are enough blocks.
//
// A block: 1024 bytes of sound in native byte order; the number of the block, 2 bytes, low byte
// first; two zero bytes.
class AudioStream {
  public:
    static constexpr std::size_t SoundBytes = 1024;
    static constexpr std::size_t BlockBytes = 1028;
    static constexpr std::size_t MostWaiting = 60; // about 2.5 s at 12,000 samples per second

    // Creates the first block to fill; the next finished block is number 0.
    void Init();
    bool IsReady() const { return !streamingDataMB.empty(); }

    // Before Init the samples are lost.
    void StreamSoundBlock(std::size_t sampleCount, const MemoryBlock& samples);

    // The oldest full block; null if there is none.
    const MemoryBlock* FirstReadyToSend() const;
    void FirstIsSent(); // its block may hold new sound

    bool isStreaming = false; // a peer has asked for sound

  private:
    void FinishBlock();

    std::list<MemoryBlock> streamingDataMB;             // the one being filled; empty before Init
    std::size_t streamingDataMBCurrentLength = 0;       // bytes of sound in it
    std::list<MemoryBlock> streamingDataMBsReadyToSend; // the newest MostWaiting, oldest first
    std::list<MemoryBlock> streamingDataMBsUsed;
    std::uint8_t streamingSequenceLSB = 0; // of the next block
    std::uint8_t streamingSequenceMSB = 0;
};

} // namespace larkspool
