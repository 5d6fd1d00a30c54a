#include "tonebridge/tonebridge.h"

#include "tonebridge/BroadcastAddress.h"
#include "tonebridge/CubebDevices.h"
#include "tonebridge/DatagramSender.h"
#include "tonebridge/DeviceList.h"
#include "tonebridge/Engine.h"
#include "tonebridge/SoundOutput.h"

#include <chrono>
#include <memory>
#include <mutex>

namespace {

std::int64_t Now() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

// Everything that the seven functions share. Made when the library is loaded, except for the
// engine's converter, which would delay the program's start.
struct Library {
    std::shared_ptr<tonebridge::Engine> engine = std::make_shared<tonebridge::Engine>(Now);
    tonebridge::SoundOutput output{engine, tonebridge::CubebFactory()};
    tonebridge::DatagramSender sender{tonebridge::BroadcastAddress};
    std::mutex mutex;
    tonebridge::DeviceList devices;
};

Library library;

} // namespace

int64_t BuildSoundDeviceList() {
    constexpr std::chrono::seconds Patience{3};
    tonebridge::DeviceList found = library.output.Scan(Patience);
    const std::lock_guard lock(library.mutex);
    library.devices = std::move(found);
    return static_cast<int64_t>(library.devices.Devices().size());
}

void GetSoundDeviceInfo(int64_t index, void* info, void* name) {
    if (info == nullptr || name == nullptr) {
        return;
    }
    constexpr std::size_t Size = tonebridge::DeviceList::RecordSize;
    const std::lock_guard lock(library.mutex);
    library.devices.Describe(index, {static_cast<std::byte*>(info), Size},
                             {static_cast<std::byte*>(name), Size});
}

void StartSoundOutput(int64_t device, double volume) {
    library.engine->SetVolume(volume);
    const std::lock_guard lock(library.mutex);
    library.output.Start(library.devices.Output(device));
}

void StopSoundOutput() { library.output.Stop(); }

void setSoundOutputVolume(double volume) {
    constexpr double FullVolume = 4.0;
    library.engine->SetVolume(volume / FullVolume);
}

void OutputSoundBlock(int64_t count, const int16_t* samples, int64_t rate) {
    library.engine->Push(count, samples, rate);
}

void SendUdpCommand(const void* data, int64_t length, int64_t port) {
    constexpr int64_t Longest = 65507;
    constexpr int64_t HighestPort = 65535;
    if (data == nullptr || length < 0 || length > Longest || port < 1 || port > HighestPort) {
        return;
    }
    library.sender.Send({static_cast<const std::byte*>(data), static_cast<std::size_t>(length)},
                        static_cast<std::uint16_t>(port));
}
