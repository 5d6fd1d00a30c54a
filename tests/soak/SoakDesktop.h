#pragma once

#include "support/VirtualDesktop.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace larkspool::soak {

// Hands on what is played and what goes out, and keeps nothing.
class Ear : public SoundLibrary {
  public:
    std::int64_t BuildSoundDeviceList() override { return 0; }
    void GetSoundDeviceInfo(std::int64_t, void*, char*) override {}
    void StartSoundOutput(std::int64_t, double) override {}
    void StopSoundOutput() override {}
    void SetSoundOutputVolume(double) override {}
    void OutputSoundBlock(std::int64_t count, const void* samples, std::int64_t) override {
        // A new stream is announced by a negative count, and opens with silence of the program's
        // own.
        if (count >= 0 && !isPriming) {
            heard({static_cast<const std::int16_t*>(samples), static_cast<std::size_t>(count)});
        }
        isPriming = count < 0;
    }
    void SendUdpCommand(const void* data, std::int64_t length, std::int64_t port) override {
        constexpr std::int64_t StreamPort = 58286;
        if (port == StreamPort) {
            streamed({static_cast<const char*>(data), static_cast<std::size_t>(length)});
        }
    }

    std::function<void(std::span<const std::int16_t>)> heard;
    std::function<void(std::string_view)> streamed;

  private:
    bool isPriming = false;
};

class SoakDesktop : public VirtualDesktop {
  public:
    SoundLibrary& Sound() override { return ear; }

    Ear ear;
};

} // namespace larkspool::soak
