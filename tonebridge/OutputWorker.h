#pragma once

#include "tonebridge/OutputKeeper.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace tonebridge {

// The work of the control thread, which is the only one that uses the keeper and the sound server.
// Other threads put their requests into a few fields, and it reads them when it has time. Owned by
// SoundOutput and the thread together.
class OutputWorker : public StreamClient {
  public:
    OutputWorker(std::shared_ptr<Engine> sound, DeviceLayerFactory connectToServer);

    // The control thread, until Quit.
    void Run();

    // Any other thread. Only Scan waits for the sound server, and no longer than patience.
    DeviceList Scan(std::chrono::milliseconds patience);
    void Want(std::optional<Device> device);
    // False if the thread hasn't ended within patience.
    bool Quit(std::chrono::milliseconds patience);

    // The sound server's threads.
    void RenderStereo(std::span<float> samples) override;
    void StreamFailed() override;

  private:
    struct Request {
        bool isQuit = false;
        bool isScan = false;
        bool isChange = false;
        bool isFailure = false;
        std::optional<Device> device;
    };

    Request WaitForRequest();
    void Fulfil(const Request& next);
    void ScanNow();

    const std::shared_ptr<Engine> engine;
    OutputKeeper keeper; // used on the control thread only

    std::mutex mutex;
    std::condition_variable changed;
    Request request;
    std::uint64_t scansWanted = 0;
    std::uint64_t scansDone = 0;
    DeviceList devices;
    bool isStarted = false;
    bool hasEnded = false;
};

} // namespace tonebridge
