#include "tonebridge/SoundOutput.h"

#include "tonebridge/OutputWorker.h"

namespace tonebridge {

SoundOutput::SoundOutput(std::shared_ptr<Engine> engine, DeviceLayerFactory connect)
    : worker(std::make_shared<OutputWorker>(std::move(engine), std::move(connect))) {}

SoundOutput::~SoundOutput() {
    if (!thread.joinable()) {
        return;
    }
    constexpr std::chrono::seconds Patience{2};
    if (worker->Quit(Patience)) {
        thread.join();
    } else {
        thread.detach();
    }
}

DeviceList SoundOutput::Scan(std::chrono::milliseconds patience) {
    StartThread();
    return worker->Scan(patience);
}

void SoundOutput::Start(std::optional<Device> device) {
    StartThread();
    worker->Want(device ? *device : Device{});
}

void SoundOutput::Stop() { worker->Want(std::nullopt); }

void SoundOutput::StartThread() {
    const std::lock_guard lock(mutex);
    if (!thread.joinable()) {
        thread = std::thread([shared = worker] { shared->Run(); });
    }
}

} // namespace tonebridge
