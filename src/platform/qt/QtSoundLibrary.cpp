#include "platform/qt/QtSoundLibrary.h"

namespace larkspool {

QtSoundLibrary::QtSoundLibrary(const QString& path) : library(path) {
    // Its threads may still run while the process ends.
    library.setLoadHints(QLibrary::PreventUnloadHint);
    loader = std::thread([this] { library.load(); });
}

QtSoundLibrary::~QtSoundLibrary() { AwaitLibrary(); }

void QtSoundLibrary::AwaitLibrary() {
    if (loader.joinable()) {
        loader.join();
    }
}

template <typename Function>
Function* QtSoundLibrary::Find(const char* name) {
    auto place = found.find(name);
    if (place == found.end()) {
        AwaitLibrary();
        place = found.emplace(name, library.resolve(name)).first;
    }
    if (place->second == nullptr) {
        throw FunctionNotFound(name, library.fileName().toStdString());
    }
    return reinterpret_cast<Function*>(place->second);
}

std::int64_t QtSoundLibrary::BuildSoundDeviceList() {
    return Find<std::int64_t()>("BuildSoundDeviceList")();
}

void QtSoundLibrary::GetSoundDeviceInfo(std::int64_t index, void* info, char* name) {
    Find<void(std::int64_t, void*, void*)>("GetSoundDeviceInfo")(index, info, name);
}

void QtSoundLibrary::StartSoundOutput(std::int64_t outputDevice, double volume) {
    Find<void(std::int64_t, double)>("StartSoundOutput")(outputDevice, volume);
}

void QtSoundLibrary::StopSoundOutput() { Find<void()>("StopSoundOutput")(); }

void QtSoundLibrary::SetSoundOutputVolume(double volume) {
    Find<void(double)>("setSoundOutputVolume")(volume);
}

void QtSoundLibrary::OutputSoundBlock(std::int64_t count, const void* samples, std::int64_t rate) {
    Find<void(std::int64_t, const std::int16_t*, std::int64_t)>("OutputSoundBlock")(
        count, static_cast<const std::int16_t*>(samples), rate);
}

void QtSoundLibrary::SendUdpCommand(const void* data, std::int64_t length, std::int64_t port) {
    Find<void(const void*, std::int64_t, std::int64_t)>("SendUdpCommand")(data, length, port);
}

} // namespace larkspool
