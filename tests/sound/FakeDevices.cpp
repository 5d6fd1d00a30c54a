#include "sound/FakeDevices.h"

namespace tonebridge::test {

class FakeServer::Stream : public OutputStream {
  public:
    Stream(FakeServer& owner, std::string device) : server(owner), id(std::move(device)) {}
    ~Stream() override {
        const std::lock_guard lock(server.mutex);
        server.streams.erase(this);
        server.changed.notify_all();
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    const std::string& Id() const { return id; }

  private:
    FakeServer& server;
    const std::string id;
};

class FakeServer::Layer : public DeviceLayer {
  public:
    explicit Layer(FakeServer& owner) : server(owner) { ++server.connections; }
    ~Layer() override { --server.connections; }
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;

    std::vector<DeviceSide> ListOutputs() override {
        const auto lock = server.Ask();
        return server.outputs;
    }
    std::vector<DeviceSide> ListInputs() override {
        const auto lock = server.Ask();
        return server.inputs;
    }
    std::unique_ptr<OutputStream> Open(const std::string& id, std::uint32_t /*rate*/,
                                       StreamClient& client) override {
        const auto lock = server.Ask();
        if (!server.canOpen) {
            return nullptr;
        }
        auto stream = std::make_unique<Stream>(server, id);
        server.streams[stream.get()] = &client;
        server.changed.notify_all();
        return stream;
    }

  private:
    FakeServer& server;
};

void FakeServer::SetOutputs(std::vector<DeviceSide> sides) {
    const std::lock_guard lock(mutex);
    outputs = std::move(sides);
}

void FakeServer::SetInputs(std::vector<DeviceSide> sides) {
    const std::lock_guard lock(mutex);
    inputs = std::move(sides);
}

void FakeServer::SetRunning(bool runs) {
    const std::lock_guard lock(mutex);
    isRunning = runs;
}

void FakeServer::SetOpening(bool works) {
    const std::lock_guard lock(mutex);
    canOpen = works;
}

void FakeServer::SetHanging(bool hangs) {
    const std::lock_guard lock(mutex);
    isHanging = hangs;
    changed.notify_all();
}

std::vector<std::string> FakeServer::Playing() {
    const std::lock_guard lock(mutex);
    std::vector<std::string> ids;
    for (const auto& [stream, client] : streams) {
        ids.push_back(stream->Id());
    }
    return ids;
}

bool FakeServer::WaitForPlaying(const std::string& id) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(10), [&] {
        return id.empty() ? streams.empty()
                          : streams.size() == 1 && streams.begin()->first->Id() == id;
    });
}

void FakeServer::Fail(const std::string& id) {
    const std::lock_guard lock(mutex);
    for (const auto& [stream, client] : streams) {
        if (stream->Id() == id) {
            client->StreamFailed();
        }
    }
}

std::vector<float> FakeServer::Render(std::size_t frames) {
    const std::lock_guard lock(mutex);
    std::vector<float> samples(2 * frames);
    for (const auto& [stream, client] : streams) {
        client->RenderStereo(samples);
    }
    return samples;
}

DeviceLayerFactory FakeServer::Factory() {
    return [this] { return Connect(); };
}

std::unique_ptr<DeviceLayer> FakeServer::Connect() {
    ++attempts;
    const auto lock = Ask();
    return isRunning ? std::make_unique<Layer>(*this) : nullptr;
}

std::unique_lock<std::mutex> FakeServer::Ask() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return !isHanging; });
    return lock;
}

} // namespace tonebridge::test
