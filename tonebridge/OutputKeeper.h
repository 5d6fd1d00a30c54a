#pragma once

#include "tonebridge/DeviceLayer.h"
#include "tonebridge/DeviceList.h"
#include "tonebridge/Engine.h"

#include <chrono>
#include <memory>
#include <optional>

namespace tonebridge {

// Decides what plays where: opens the wanted output, replaces one that is lost and returns to it.
// Without a device it keeps the engine going. Used by one thread, and waits for nothing but the
// sound server. Owned by the worker.
class OutputKeeper {
  public:
    // Any steady clock.
    using Time = std::chrono::nanoseconds;

    // The client gives an open stream its sound.
    OutputKeeper(Engine& sound, StreamClient& streamClient, DeviceLayerFactory connectToServer);

    DeviceList Scan() const;
    // Fades out the open output and replaces it by this one: a device without a name is the default
    // one, and no device is silence.
    void Want(std::optional<Device> device, Time now);
    // The events that the client received.
    void StreamFailed();

    // Does what is due. To be called after each of these, and again within NextTick.
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
