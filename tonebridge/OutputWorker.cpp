#include "tonebridge/OutputWorker.h"

#include <algorithm>
#include <utility>

namespace tonebridge {

namespace {

OutputKeeper::Time Now() { return std::chrono::steady_clock::now().time_since_epoch(); }

} // namespace

OutputWorker::OutputWorker(std::shared_ptr<Engine> sound, DeviceLayerFactory connectToServer)
    : engine(std::move(sound)), keeper(*engine, *this, std::move(connectToServer)) {}

void OutputWorker::Run() {
    for (bool isQuitting = false; !isQuitting || keeper.IsOpen();) {
        const Request next = WaitForRequest();
        isQuitting = isQuitting || next.isQuit;
        Fulfil(next);
        keeper.Tick(Now());
    }
    const std::lock_guard lock(mutex);
    hasEnded = true;
    changed.notify_all();
}

DeviceList OutputWorker::Scan(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex);
    request.isScan = true;
    const std::uint64_t number = ++scansWanted;
    changed.notify_all();
    const bool isDone = changed.wait_for(lock, patience, [&] { return scansDone >= number; });
    DeviceList found = isDone ? devices : DeviceList{};
    if (!isStarted && !found.Output(0)) {
        // There is no output to choose, so the caller won't start one.
        request.isChange = true;
        request.device = Device{};
        changed.notify_all();
    }
    return found;
}

void OutputWorker::Want(std::optional<Device> device) {
    const std::lock_guard lock(mutex);
    isStarted = true;
    request.isChange = true;
    request.device = std::move(device);
    changed.notify_all();
}

bool OutputWorker::Quit(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex);
    request.isQuit = true;
    changed.notify_all();
    return changed.wait_for(lock, patience, [&] { return hasEnded; });
}

void OutputWorker::RenderStereo(std::span<float> samples) {
    // The second half holds the mono frames until each is copied to both channels.
    const std::size_t frames = samples.size() / 2;
    engine->Render(samples.last(frames));
    for (std::size_t i = 0; i < frames; ++i) {
        const float sample = samples[frames + i];
        samples[2 * i] = sample;
        samples[2 * i + 1] = sample;
    }
}

void OutputWorker::StreamFailed() {
    const std::lock_guard lock(mutex);
    request.isFailure = true;
    changed.notify_all();
}

OutputWorker::Request OutputWorker::WaitForRequest() {
    std::unique_lock lock(mutex);
    const auto isAsked = [&] {
        return request.isQuit || request.isScan || request.isChange || request.isFailure;
    };
    if (const auto pause = keeper.NextTick(Now())) {
        changed.wait_for(lock, *pause, isAsked);
    } else {
        changed.wait(lock, isAsked);
    }
    return std::exchange(request, {});
}

void OutputWorker::Fulfil(const Request& next) {
    if (next.isScan) {
        ScanNow();
    }
    if (next.isFailure) {
        keeper.StreamFailed();
    }
    if (next.isChange || next.isQuit) {
        keeper.Want(next.isQuit ? std::nullopt : next.device, Now());
    }
}

void OutputWorker::ScanNow() {
    std::uint64_t number = 0;
    {
        const std::lock_guard lock(mutex);
        number = scansWanted;
    }
    DeviceList found = keeper.Scan();
    const std::lock_guard lock(mutex);
    devices = std::move(found);
    scansDone = number;
    changed.notify_all();
}

} // namespace tonebridge
