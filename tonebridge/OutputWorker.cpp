#include "tonebridge/OutputWorker.h"

#include <algorithm>
#include <utility>

namespace tonebridge {

namespace {

constexpr std::chrono::milliseconds IdleTick{50};
constexpr std::chrono::seconds RetryInterval{1};
constexpr std::uint32_t UsualRate = 48000;

std::uint32_t StreamRate(const DeviceSide& output) {
    return output.rate == 0 ? UsualRate : std::clamp(output.rate, 44100U, 96000U);
}

} // namespace

OutputWorker::OutputWorker(std::shared_ptr<Engine> sound, DeviceLayerFactory connectToServer)
    : engine(std::move(sound)), connect(std::move(connectToServer)) {}

void OutputWorker::Run() {
    std::optional<Device> wanted;
    playedUntil = Clock::now();
    for (;;) {
        const Request next = WaitForRequest();
        if (next.isQuit) {
            break;
        }
        if (next.isScan) {
            ScanNow();
        }
        if (next.isChange || next.isFailure) {
            CloseStream();
        }
        if (next.isChange) {
            wanted = next.device;
            nextTry = {};
        }
        if (wanted && !stream && Clock::now() >= nextTry) {
            TryToOpen(*wanted);
        }
        if (!stream) {
            PlayToNobody();
        }
    }
    CloseStream();
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
    return isDone ? devices : DeviceList{};
}

void OutputWorker::Want(std::optional<Device> device) {
    const std::lock_guard lock(mutex);
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
    while (!samples.empty()) {
        const std::size_t frames = std::min(samples.size() / 2, mono.size());
        engine->Render(std::span(mono).first(frames));
        for (std::size_t i = 0; i < frames; ++i) {
            samples[2 * i] = mono[i];
            samples[2 * i + 1] = mono[i];
        }
        samples = samples.subspan(2 * frames);
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
    if (stream) {
        changed.wait(lock, isAsked);
    } else {
        changed.wait_for(lock, IdleTick, isAsked);
    }
    return std::exchange(request, {});
}

void OutputWorker::ScanNow() {
    std::uint64_t number = 0;
    {
        const std::lock_guard lock(mutex);
        number = scansWanted;
    }
    DeviceList found;
    if (const std::unique_ptr<DeviceLayer> server = connect()) {
        std::vector<DeviceSide> outputs = server->ListOutputs();
        found = DeviceList(std::move(outputs), server->ListInputs());
    }
    const std::lock_guard lock(mutex);
    devices = std::move(found);
    scansDone = number;
    changed.notify_all();
}

void OutputWorker::TryToOpen(const Device& device) {
    nextTry = Clock::now() + RetryInterval;
    layer = connect();
    if (layer) {
        const std::vector<DeviceSide> outputs = layer->ListOutputs();
        if (const DeviceSide* const output = FindOutput(outputs, device)) {
            const std::uint32_t rate = StreamRate(*output);
            engine->SetDeviceRate(rate);
            stream = layer->Open(output->id, rate, *this);
        }
    }
    if (!stream) {
        layer.reset();
        engine->SetDeviceRate(UsualRate);
    }
}

void OutputWorker::CloseStream() {
    stream.reset();
    layer.reset();
    engine->SetDeviceRate(UsualRate);
    playedUntil = Clock::now();
    const std::lock_guard lock(mutex);
    request.isFailure = false;
}

void OutputWorker::PlayToNobody() {
    const Clock::time_point now = Clock::now();
    const double seconds = std::min(std::chrono::duration<double>(now - playedUntil).count(), 0.5);
    playedUntil = now;
    auto frames = static_cast<std::size_t>(seconds * UsualRate);
    while (frames > 0) {
        const std::size_t count = std::min(frames, mono.size());
        engine->Render(std::span(mono).first(count));
        frames -= count;
    }
}

} // namespace tonebridge
