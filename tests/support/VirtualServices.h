#pragma once

#include "platform/HTTPSocket.h"
#include "platform/SoundLibrary.h"
#include "platform/Timer.h"
#include "platform/UDPSocket.h"
#include "support/EventQueue.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspool {

class VirtualTimer : public Timer {
  public:
    explicit VirtualTimer(EventQueue& loop) : queue(loop) {}

    void SetPeriod(int milliseconds) override { period = milliseconds / 1000.0; }
    void SetMode(Mode wanted) override;
    Mode RunMode() const override { return mode; }

  private:
    void Arm();

    EventQueue& queue;
    double period = 1; // seconds
    Mode mode = Mode::Off;
    std::shared_ptr<int> run; // of the run under way: a stopped run's event is void
};

// A UDP socket that the test feeds.
class VirtualUDPSocket : public UDPSocket {
  public:
    explicit VirtualUDPSocket(EventQueue& loop) : queue(loop) {}

    void Connect() override { bound = lastError == 0; }
    Datagram Read() override;
    std::string BroadcastAddress() const override { return "127.255.255.255"; }
    int LastErrorCode() const override { return lastError; }

    void Deliver(std::string data);

    bool bound = false;
    int lastError = 0;

  private:
    EventQueue& queue;
    std::deque<std::string> waiting;
    std::shared_ptr<int> life = std::make_shared<int>(0);
};

// An HTTP socket that the test answers.
class VirtualHTTPSocket : public HTTPSocket {
  public:
    explicit VirtualHTTPSocket(std::shared_ptr<std::vector<VirtualHTTPSocket*>> open);
    ~VirtualHTTPSocket() override;
    VirtualHTTPSocket(const VirtualHTTPSocket&) = delete;
    VirtualHTTPSocket& operator=(const VirtualHTTPSocket&) = delete;

    void Get(const std::string& wanted) override { url = wanted; }

    // The other end's answer.
    void Deliver(const std::string& content, int status = 200) const;
    void Fail(int code) const;

    std::string url; // empty: nothing was asked for yet

  private:
    std::shared_ptr<std::vector<VirtualHTTPSocket*>> all;
};

// Stands in for the native sound library and notes every call.
class RecordingSoundLibrary : public SoundLibrary {
  public:
    struct Device {
        std::string name;
        std::uint32_t inputs = 0;
        std::uint32_t outputs = 2;
    };

    std::int64_t BuildSoundDeviceList() override;
    void GetSoundDeviceInfo(std::int64_t index, void* info, char* name) override;
    void StartSoundOutput(std::int64_t outputDevice, double volume) override;
    void StopSoundOutput() override;
    void SetSoundOutputVolume(double volume) override;
    void OutputSoundBlock(std::int64_t count, const void* samples, std::int64_t rate) override;
    void SendUdpCommand(const void* data, std::int64_t length, std::int64_t port) override;

    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    std::vector<Device> devices = {{"Speakers"}, {"Microphone", 1, 0}, {"Headphones"}};
    std::set<std::string> missing; // functions that this library hasn't
    std::vector<std::int16_t> played;
    std::vector<std::pair<std::int64_t, std::string>> datagrams; // port, bytes
    bool keepsSound = true; // collect what is called and played
    // Where set, they take the samples and the datagrams, and nothing of either is collected.
    std::function<void(std::span<const std::int16_t> samples)> heard;
    std::function<void(std::int64_t port, std::string_view bytes)> sent;

  private:
    void Note(const char* function, const std::string& arguments = {});

    std::vector<std::string> calls; // "StartSoundOutput 0 1"
    bool isPriming = false;
};

} // namespace larkspool
