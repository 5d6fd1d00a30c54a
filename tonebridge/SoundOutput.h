#pragma once

#include "tonebridge/DeviceLayer.h"
#include "tonebridge/DeviceList.h"
#include "tonebridge/Engine.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace tonebridge {

class OutputWorker;

// Keeps the chosen output open on a thread of its own, so that no caller ever waits for a sound
// server. While no device is open, that thread takes the engine's sound and drops it, so that the
// sound is on time when one opens. Owned by the library.
class SoundOutput {
  public:
    // The engine is shared with the thread, which is detached at the end if a sound server blocks
    // it.
    SoundOutput(std::shared_ptr<Engine> engine, DeviceLayerFactory connect);
    ~SoundOutput();
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;

    // Scans the devices, waiting at most patience; an empty list if it takes longer.
    DeviceList Scan(std::chrono::milliseconds patience);
    // Opens this output, or the default one if empty, in place of the open one.
    void Start(std::optional<Device> device);
    void Stop();

  private:
    void StartThread();

    std::shared_ptr<OutputWorker> worker;
    std::mutex mutex;
    std::thread thread;
};

} // namespace tonebridge
