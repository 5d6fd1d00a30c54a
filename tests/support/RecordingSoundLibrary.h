#pragma once

#include "platform/SoundLibrary.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspool {

// Stands in for the native sound library and notes every call.
class RecordingSoundLibrary : public SoundLibrary {
  public:
    struct Device {
        std::string name;
        std::uint32_t inputs = 0;
        std::uint32_t outputs = 2;
    };

    std::int64_t BuildSoundDeviceList() override {
        Note("BuildSoundDeviceList");
        return std::ssize(devices);
    }
    void GetSoundDeviceInfo(std::int64_t index, void* info, char* name) override {
        Note("GetSoundDeviceInfo", Str(index));
        const Device& device = devices.at(static_cast<std::size_t>(index));
        const auto id = static_cast<std::uint32_t>(index + 100);
        const std::uint32_t record[] = {id, device.inputs, device.outputs, id + 10, id + 20, 0};
        std::ranges::copy(record, static_cast<std::uint32_t*>(info));
        *std::ranges::copy(device.name, name).out = '\0';
    }
    void StartSoundOutput(std::int64_t outputDevice, double volume) override {
        Note("StartSoundOutput", Str(outputDevice) + " " + Str(volume));
    }
    void StopSoundOutput() override { Note("StopSoundOutput"); }
    void SetSoundOutputVolume(double volume) override { Note("setSoundOutputVolume", Str(volume)); }
    void OutputSoundBlock(std::int64_t count, const void* samples, std::int64_t rate) override {
        Note("OutputSoundBlock", Str(count) + " " + Str(rate));
        // A negative count announces a stream, which opens with silence of the program's own.
        const auto* first = static_cast<const std::int16_t*>(samples);
        if (heard && count > 0 && !isPriming) {
            heard({first, static_cast<std::size_t>(count)});
        } else if (!heard && count > 0 && keepsSound) {
            played.insert(played.end(), first, first + count);
        }
        isPriming = count < 0;
    }
    void SendUdpCommand(const void* data, std::int64_t length, std::int64_t port) override {
        Note("SendUdpCommand", Str(length) + " " + Str(port));
        const std::string_view bytes(static_cast<const char*>(data),
                                     static_cast<std::size_t>(length));
        if (sent) {
            sent(port, bytes);
        } else {
            datagrams.emplace_back(port, bytes);
        }
    }

    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    std::vector<Device> devices = {{"Speakers"}, {"Microphone", 1, 0}, {"Headphones"}};
    std::set<std::string> missing; // functions that this library hasn't
    std::vector<std::int16_t> played;
    std::vector<std::pair<std::int64_t, std::string>> datagrams; // port, bytes
    bool keepsSound = true; // collect what is called and played
    // If set, they take the samples and the datagrams, and nothing of either is collected.
    std::function<void(std::span<const std::int16_t> samples)> heard;
    std::function<void(std::int64_t port, std::string_view bytes)> sent;

  private:
    void Note(const char* function, const std::string& arguments = {}) {
        if (missing.contains(function)) {
            throw FunctionNotFound(function, "libtonebridge.so");
        }
        if (keepsSound && !heard) {
            calls.push_back(arguments.empty() ? function : function + (" " + arguments));
        }
    }

    std::vector<std::string> calls; // "StartSoundOutput 0 1"
    bool isPriming = false;
};

} // namespace larkspool
