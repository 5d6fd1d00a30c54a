#pragma once

#include "tonebridge/DeviceLayer.h"
#include "tonebridge/DeviceList.h"
#include "tonebridge/Engine.h"

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace tonebridge {

// The control thread's work: it alone talks to the sound server. What others
// want is left in a few fields that it looks at when it has time. Shared by
// SoundOutput and the thread.
class OutputWorker : public StreamClient {
  public:
    OutputWorker(std::shared_ptr<Engine> sound, DeviceLayerFactory connectToServer);

    // The control thread, until Quit.
    void Run();

    // Any other thread. None of them waits for the sound server but Scan, and
    // that no longer than `patience`.
    DeviceList Scan(std::chrono::milliseconds patience);
    void Want(std::optional<Device> device);
    // False where the thread hasn't ended within `patience`.
    bool Quit(std::chrono::milliseconds patience);

    // The sound server's threads.
    void RenderStereo(std::span<float> samples) override;
    void StreamFailed() override;

  private:
    using Clock = std::chrono::steady_clock;
    struct Request {
        bool isQuit = false;
        bool isScan = false;
        bool isChange = false;
        bool isFailure = false;
        std::optional<Device> device;
    };

    Request WaitForRequest();
    void ScanNow();
    void TryToOpen(const Device& device);
    void CloseStream();
    void PlayToNobody();

    const std::shared_ptr<Engine> engine;
    const DeviceLayerFactory connect;

    std::mutex mutex;
    std::condition_variable changed;
    Request request;
    std::uint64_t scansWanted = 0;
    std::uint64_t scansDone = 0;
    DeviceList devices;
    bool hasEnded = false;

    // Of the control thread alone. The layer outlives its stream.
    std::unique_ptr<DeviceLayer> layer;
    std::unique_ptr<OutputStream> stream;
    Clock::time_point nextTry{};
    Clock::time_point playedUntil{};

    // Of whoever renders.
    std::array<float, 4096> mono{};
};

} // namespace tonebridge
