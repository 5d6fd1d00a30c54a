#pragma once

#include "platform/SoundLibrary.h"

#include <QLibrary>

#include <map>
#include <string>
#include <thread>

namespace larkspool {

// The native sound library. It loads dozens of others, so a thread loads it during the start of
// the program; the first call waits for it. Owned by the desktop.
class QtSoundLibrary : public SoundLibrary {
  public:
    explicit QtSoundLibrary(const QString& path);
    ~QtSoundLibrary() override;

    std::int64_t BuildSoundDeviceList() override;
    void GetSoundDeviceInfo(std::int64_t index, void* info, char* name) override;
    void StartSoundOutput(std::int64_t outputDevice, double volume) override;
    void StopSoundOutput() override;
    void SetSoundOutputVolume(double volume) override;
    void OutputSoundBlock(std::int64_t count, const void* samples, std::int64_t rate) override;
    void SendUdpCommand(const void* data, std::int64_t length, std::int64_t port) override;

  private:
    // Throws FunctionNotFound if the library has no such function.
    template <typename Function>
    Function* Find(const char* name);
    void AwaitLibrary();

    QLibrary library; // used by the loader thread until its end
    std::thread loader;
    std::map<std::string, QFunctionPointer, std::less<>> found; // missing ones as null
};

} // namespace larkspool
