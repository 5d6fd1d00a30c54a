#include "tonebridge/OutputKeeper.h"

#include <algorithm>
#include <utility>

namespace tonebridge {

namespace {

constexpr std::chrono::milliseconds IdleTick{500};
constexpr std::chrono::seconds RetryInterval{1};
constexpr std::chrono::seconds ReturnInterval{2};
// Longer than the device's buffer, so that the end of the fade is heard.
constexpr std::chrono::milliseconds SoftEnd{350};
constexpr int MostFailures = 3;
constexpr std::uint32_t LowestRate = 44100;
constexpr std::uint32_t UsualRate = 48000; // a higher rate costs more and sounds no better

std::uint32_t StreamRate(const DeviceSide& output) {
    return output.rate == 0 ? UsualRate : std::clamp(output.rate, LowestRate, UsualRate);
}

// The client of a device that is opened only to find out whether it can be.
class SilentClient : public StreamClient {
    void RenderStereo(std::span<float> samples) override {
        std::fill(samples.begin(), samples.end(), 0.0F);
    }
    void StreamFailed() override {}
};

} // namespace

OutputKeeper::OutputKeeper(Engine& sound, StreamClient& streamClient,
                           DeviceLayerFactory connectToServer)
    : engine(sound), client(streamClient), connect(std::move(connectToServer)) {}

DeviceList OutputKeeper::Scan() const {
    const std::unique_ptr<DeviceLayer> server = connect();
    if (!server) {
        return {};
    }
    std::vector<DeviceSide> outputs = server->ListOutputs();
    return {std::move(outputs), server->ListInputs()};
}

void OutputKeeper::Want(std::optional<Device> device, Time now) {
    wanted = std::move(device);
    failures = 0;
    nextLook = {};
    CloseSoftly(now);
}

void OutputKeeper::StreamFailed() {
    Close();
    nextLook = lastTry + RetryInterval;
}

void OutputKeeper::Tick(Time now) {
    if (closesAt && now >= *closesAt) {
        Close();
    }
    if (wanted && now >= nextLook && !closesAt) {
        if (!stream) {
            lastTry = now;
            nextLook = now + RetryInterval;
            Open();
        } else {
            nextLook = now + ReturnInterval;
            ReturnToChosen(now);
        }
    }
    if (!stream) {
        engine.PlayUnheard();
    }
}

std::optional<OutputKeeper::Time> OutputKeeper::NextTick(Time now) const {
    if (!stream) {
        return IdleTick;
    }
    if (closesAt || !wanted->name.empty()) {
        return std::max(closesAt.value_or(nextLook) - now, Time{0});
    }
    return std::nullopt;
}

void OutputKeeper::CloseSoftly(Time now) {
    if (stream && !closesAt) {
        engine.FadeOutForGood();
        closesAt = now + SoftEnd;
    }
}

void OutputKeeper::Close() {
    stream.reset();
    layer.reset();
    closesAt.reset();
}

void OutputKeeper::Open() {
    layer = connect();
    if (layer) {
        const std::vector<DeviceSide> outputs = layer->ListOutputs();
        const DeviceSide* const chosen = FindChosen(outputs, *wanted);
        if (chosen != nullptr) {
            chosenId = chosen->id;
            failures = OpenOn(*chosen) ? 0 : failures + 1;
        }
        isAstray = !stream;
        const DeviceSide* const other = FindDefault(outputs);
        if (!stream && other != nullptr && (chosen == nullptr || failures >= MostFailures)) {
            OpenOn(*other);
        }
    }
    if (!stream) {
        layer.reset();
    }
}

bool OutputKeeper::OpenOn(const DeviceSide& output) {
    const std::uint32_t rate = StreamRate(output);
    engine.OpenDevice(rate);
    stream = layer->Open(output.id, rate, client);
    openedId = output.id;
    return stream != nullptr;
}

// If the stream plays on another device although the chosen one was always present, the user has
// moved it, and it stays there.
void OutputKeeper::ReturnToChosen(Time now) {
    const std::string reported = stream->DeviceId();
    const std::string& current = reported.empty() ? openedId : reported;
    if (wanted->name.empty() || (current == chosenId && !isAstray)) {
        return;
    }
    const std::vector<DeviceSide> outputs = layer->ListOutputs();
    const DeviceSide* const chosen = FindChosen(outputs, *wanted);
    if (chosen == nullptr) {
        isAstray = true;
    } else if (chosen->id == current) {
        isAstray = false;
    } else if (isAstray && CanOpen(*chosen)) {
        nextLook = {};
        CloseSoftly(now);
    }
}

bool OutputKeeper::CanOpen(const DeviceSide& output) const {
    SilentClient silent;
    return layer->Open(output.id, StreamRate(output), silent) != nullptr;
}

} // namespace tonebridge
