#pragma once

#include "tonebridge/DeviceLayer.h"
#include "tonebridge/DeviceList.h"
#include "tonebridge/Engine.h"

#include <chrono>
#include <memory>
#include <optional>

namespace tonebridge {

// Decides which output plays: opens the wanted one, uses another while it is lost, and returns to
// it. Without a device it takes the sound from the engine. Used by one thread, and waits only for
// the sound server. Owned by the worker.
class OutputKeeper {
  public:
    // Any steady clock.
    using Time = std::chrono::nanoseconds;

    // An open stream gets its sound from the client.
    OutputKeeper(Engine& sound, StreamClient& streamClient, DeviceLayerFactory connectToServer);

    DeviceList Scan() const;
    // Fades out the open output and opens this one. A device without a name is the default output;
    // without a device there is silence.
    void Want(std::optional<Device> device, Time now);
    // Call it when the client has got this event.
    void StreamFailed();

    // Does what is due. Call it after each of these calls, and again within NextTick.
    void Tick(Time now);
    // Empty if there is nothing to do until one of the calls above.
    std::optional<Time> NextTick(Time now) const;
    bool IsOpen() const { return stream != nullptr; }

  private:
    void CloseSoftly(Time now);
    void Close();
    void Open();
    bool OpenOn(const DeviceSide& output);
    void ReturnToChosen(Time now);
    bool CanOpen(const DeviceSide& output) const;

    Engine& engine;
    StreamClient& client;
    const DeviceLayerFactory connect;

    std::optional<Device> wanted;
    std::unique_ptr<DeviceLayer> layer; // outlives its stream
    std::unique_ptr<OutputStream> stream;
    std::string openedId;
    std::string chosenId;
    int failures = 0;      // of the chosen device, in a row
    bool isAstray = false; // the chosen device was missing, or could not be opened
    Time lastTry{};
    Time nextLook{};
    std::optional<Time> closesAt;
};

} // namespace tonebridge
