#include "tonebridge/CubebDevices.h"

#include <algorithm>
#include <cubeb/cubeb.h>

namespace tonebridge {

namespace {

struct ContextCloser {
    void operator()(cubeb* context) const { cubeb_destroy(context); }
};

struct StreamCloser {
    void operator()(cubeb_stream* stream) const {
        cubeb_stream_stop(stream);
        cubeb_stream_destroy(stream);
    }
};

long OnData(cubeb_stream* /*stream*/, void* user, const void* /*input*/, void* output,
            long frames) {
    const std::span<float> samples(static_cast<float*>(output),
                                   2 * static_cast<std::size_t>(frames));
    static_cast<StreamClient*>(user)->RenderStereo(samples);
    return frames;
}

void OnState(cubeb_stream* /*stream*/, void* user, cubeb_state state) {
    if (state == CUBEB_STATE_ERROR) {
        static_cast<StreamClient*>(user)->StreamFailed();
    }
}

DeviceSide Describe(const cubeb_device_info& info) {
    DeviceSide side;
    side.id = info.device_id != nullptr ? info.device_id : "";
    side.name = info.friendly_name != nullptr ? info.friendly_name : side.id;
    side.channels = info.max_channels;
    side.rate = info.default_rate;
    side.isDefault = info.preferred != CUBEB_DEVICE_PREF_NONE;
    return side;
}

class CubebStream : public OutputStream {
  public:
    explicit CubebStream(cubeb_stream* opened) : stream(opened) {}
    bool Start() { return cubeb_stream_start(stream.get()) == CUBEB_OK; }
    std::string DeviceId() const override;

  private:
    std::unique_ptr<cubeb_stream, StreamCloser> stream;
};

std::string CubebStream::DeviceId() const {
    cubeb_device* device = nullptr;
    if (cubeb_stream_get_current_device(stream.get(), &device) != CUBEB_OK) {
        return {};
    }
    std::string id = device->output_name != nullptr ? device->output_name : "";
    cubeb_stream_device_destroy(stream.get(), device);
    return id;
}

class CubebDevices : public DeviceLayer {
  public:
    CubebDevices(cubeb* opened, std::shared_ptr<std::string> provenBackend)
        : context(opened), proven(std::move(provenBackend)) {}

    std::vector<DeviceSide> ListOutputs() override { return List(CUBEB_DEVICE_TYPE_OUTPUT); }
    std::vector<DeviceSide> ListInputs() override { return List(CUBEB_DEVICE_TYPE_INPUT); }
    std::unique_ptr<OutputStream> Open(const std::string& id, std::uint32_t rate,
                                       StreamClient& client) override;

  private:
    std::vector<DeviceSide> List(cubeb_device_type type);
    std::unique_ptr<OutputStream> OpenDevice(cubeb_devid device, std::uint32_t rate,
                                             StreamClient& client);

    std::unique_ptr<cubeb, ContextCloser> context;
    const std::shared_ptr<std::string> proven; // the backend that has played
};

std::vector<DeviceSide> CubebDevices::List(cubeb_device_type type) {
    cubeb_device_collection collection{};
    if (cubeb_enumerate_devices(context.get(), type, &collection) != CUBEB_OK) {
        return {};
    }
    std::vector<DeviceSide> sides;
    for (const cubeb_device_info& info : std::span(collection.device, collection.count)) {
        if (info.state != CUBEB_DEVICE_STATE_DISABLED) {
            sides.push_back(Describe(info));
        }
    }
    cubeb_device_collection_destroy(context.get(), &collection);
    return sides;
}

std::unique_ptr<OutputStream> CubebDevices::Open(const std::string& id, std::uint32_t rate,
                                                 StreamClient& client) {
    // Device handles are valid only as long as the listing that they came with.
    cubeb_device_collection collection{};
    if (cubeb_enumerate_devices(context.get(), CUBEB_DEVICE_TYPE_OUTPUT, &collection) != CUBEB_OK) {
        return nullptr;
    }
    const std::span<const cubeb_device_info> infos(collection.device, collection.count);
    const auto found = std::ranges::find_if(
        infos, [&](const cubeb_device_info& info) { return Describe(info).id == id; });
    std::unique_ptr<OutputStream> stream;
    if (found != infos.end()) {
        stream = OpenDevice(found->devid, rate, client);
    }
    cubeb_device_collection_destroy(context.get(), &collection);
    return stream;
}

std::unique_ptr<OutputStream> CubebDevices::OpenDevice(cubeb_devid device, std::uint32_t rate,
                                                       StreamClient& client) {
    cubeb_stream_params params{};
    params.format = CUBEB_SAMPLE_FLOAT32NE;
    params.rate = rate;
    params.channels = 2;
    params.layout = CUBEB_LAYOUT_STEREO;
    params.prefs = CUBEB_STREAM_PREF_NONE;
    std::uint32_t latency = 0;
    cubeb_get_min_latency(context.get(), &params, &latency);
    // A quarter of a second is enough on a busy computer.
    latency = std::clamp(std::max(latency, rate / 4), 1U, 96000U);
    cubeb_stream* opened = nullptr;
    if (cubeb_stream_init(context.get(), &opened, "Larkspool", nullptr, nullptr, device, &params,
                          latency, OnData, OnState, &client) != CUBEB_OK) {
        return nullptr;
    }
    auto stream = std::make_unique<CubebStream>(opened);
    if (!stream->Start()) {
        return nullptr;
    }
    *proven = cubeb_get_backend_id(context.get());
    return stream;
}

} // namespace

DeviceLayerFactory CubebFactory() {
    return [proven = std::make_shared<std::string>()]() -> std::unique_ptr<DeviceLayer> {
        cubeb* context = nullptr;
        const char* const first = proven->empty() ? nullptr : proven->c_str();
        if (cubeb_init(&context, "Larkspool", first) != CUBEB_OK) {
            return nullptr;
        }
        auto layer = std::make_unique<CubebDevices>(context, proven);
        // If the given backend isn't available, cubeb tries the others.
        const bool isProven = proven->empty() || *proven == cubeb_get_backend_id(context);
        return isProven ? std::move(layer) : nullptr;
    };
}

} // namespace tonebridge
