#pragma once

#include "tonebridge/DeviceLayer.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace tonebridge::test {

// A sound server that tests furnish: its devices come, go, fail and stall when
// the test says so. It outlives every connection.
class FakeServer {
  public:
    // What the next connections find; any thread.
    void SetOutputs(std::vector<DeviceSide> sides);
    void SetInputs(std::vector<DeviceSide> sides);
    void SetRunning(bool runs);
    void SetOpening(bool works);
    // While it hangs, nobody who asks it anything gets an answer.
    void SetHanging(bool hangs);

    // The ids of the streams that play now.
    std::vector<std::string> Playing();
    // Waits for exactly this stream to play, or none for "".
    bool WaitForPlaying(const std::string& id);
    // All streams on this device are lost.
    void Fail(const std::string& id);
    // One callback on each open stream.
    std::vector<float> Render(std::size_t frames);
    int Connections() const { return connections; }
    int Attempts() const { return attempts; }

    DeviceLayerFactory Factory();

  private:
    class Layer;
    class Stream;

    std::unique_ptr<DeviceLayer> Connect();
    std::unique_lock<std::mutex> Ask();

    std::mutex mutex;
    std::condition_variable changed;
    std::vector<DeviceSide> outputs;
    std::vector<DeviceSide> inputs;
    bool isRunning = true;
    bool canOpen = true;
    bool isHanging = false;
    std::map<Stream*, StreamClient*> streams;
    std::atomic<int> connections{0};
    std::atomic<int> attempts{0};
};

} // namespace tonebridge::test
