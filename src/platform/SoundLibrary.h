#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace larkspool {

// A function that is missing in the native sound library.
class FunctionNotFound : public std::runtime_error {
  public:
    FunctionNotFound(const std::string& name, const std::string& library)
        : std::runtime_error("The function " + name + " is missing in " + library), function(name) {
    }

    std::string function;
};

// The native sound library. Each function is looked up by name at the call, and throws
// FunctionNotFound if it is missing. Every call returns at once. Pointers point into the
// caller's memory and are used only until the call returns.
class SoundLibrary {
  public:
    virtual ~SoundLibrary() = default;

    virtual std::int64_t BuildSoundDeviceList() = 0; // scans; returns the number of devices
    // info and name point to 1024 bytes each; info receives six 32-bit integers in native order,
    // name a zero-terminated text.
    virtual void GetSoundDeviceInfo(std::int64_t index, void* info, char* name) = 0;
    virtual void StartSoundOutput(std::int64_t outputDevice, double volume) = 0; // volume 0 to 1
    virtual void StopSoundOutput() = 0;
    virtual void SetSoundOutputVolume(double volume) = 0; // 0 to 4
    // count 16-bit samples in native order at rate Hz; a count of -999 carries none and starts a
    // new stream at that rate.
    virtual void OutputSoundBlock(std::int64_t count, const void* samples, std::int64_t rate) = 0;
    // One datagram to the local network's broadcast address.
    virtual void SendUdpCommand(const void* data, std::int64_t length, std::int64_t port) = 0;
};

} // namespace larkspool
