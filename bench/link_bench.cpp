// The frame reader beside the two plain copies that it must make, and beside another reader.
#include "audio/SoundFrame.h"
#include "link/WebsocketsClass.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#ifdef LARKSPOOL_HAS_WSLAY
#include <wslay/wslay.h>
#endif

namespace larkspool {
namespace {

constexpr std::size_t PayloadSize = 1024;
constexpr int FramesInARead = 16; // about what one wake-up brings

std::string OneRead() {
    const std::string frame = ServerFrame("SND" + std::string(PayloadSize - 3, 's'));
    std::string bytes;
    for (int i = 0; i < FramesInARead; ++i) {
        bytes += frame;
    }
    return bytes;
}

// A socket that always has the same bytes, at every read.
class EndlessSocket : public TCPSocket {
  public:
    void Connect() override {}
    void Disconnect() override {}
    bool IsConnected() const override { return true; }
    std::size_t BytesAvailable() const override { return bytes.size() - at; }
    std::size_t Read(std::span<std::uint8_t> destination) override {
        const std::size_t count = std::min(destination.size(), bytes.size() - at);
        std::memcpy(destination.data(), bytes.data() + at, count);
        at += count;
        return count;
    }
    std::string ReadAll() override { return {}; }
    void Write(std::string_view) override {}
    int LastErrorCode() const override { return 0; }
    SocketFailure LastFailure() const override { return {}; }
    void Refill() { at = 0; }

  private:
    std::string bytes = OneRead();
    std::size_t at = 0;
};

void FrameReader(benchmark::State& state) {
    VirtualDesktop desktop;
    Random random;
    EndlessSocket socket;
    WebsocketsClass link(desktop, random);
    link.Init(socket);
    std::string tag;
    std::string body;
    for (auto _ : state) {
        socket.Refill();
        link.ReadNewData();
        while (link.WebsocketRead(tag, body)) {
            benchmark::DoNotOptimize(body.data());
        }
    }
    state.SetItemsProcessed(state.iterations() * FramesInARead);
}
BENCHMARK(FrameReader);

void TwoPlainCopies(benchmark::State& state) {
    const std::string bytes = OneRead();
    const std::size_t frameSize = bytes.size() / FramesInARead;
    std::vector<char> ring(WebsocketsClass::FifoSize);
    std::string body;
    std::size_t in = 0;
    for (auto _ : state) {
        if (in + bytes.size() > ring.size()) {
            in = 0;
        }
        std::memcpy(ring.data() + in, bytes.data(), bytes.size());
        for (std::size_t i = 0; i < FramesInARead; ++i) {
            body.assign(ring.data() + in + i * frameSize, frameSize);
            benchmark::DoNotOptimize(body.data());
        }
        in += bytes.size();
    }
    state.SetItemsProcessed(state.iterations() * FramesInARead);
}
BENCHMARK(TwoPlainCopies);

#ifdef LARKSPOOL_HAS_WSLAY
ssize_t GiveBytes(wslay_event_context_ptr context, uint8_t* buffer, size_t length, int,
                  void* socket) {
    const std::size_t count = static_cast<EndlessSocket*>(socket)->Read({buffer, length});
    if (count == 0) {
        wslay_event_set_error(context, WSLAY_ERR_WOULDBLOCK);
        return -1;
    }
    return static_cast<ssize_t>(count);
}

void TakeMessage(wslay_event_context_ptr, const wslay_event_on_msg_recv_arg* message, void*) {
    benchmark::DoNotOptimize(message->msg);
}

void AnotherLibrarysReader(benchmark::State& state) {
    EndlessSocket socket;
    wslay_event_callbacks callbacks{};
    callbacks.recv_callback = GiveBytes;
    callbacks.on_msg_recv_callback = TakeMessage;
    wslay_event_context_ptr context = nullptr;
    wslay_event_context_client_init(&context, &callbacks, &socket);
    for (auto _ : state) {
        socket.Refill();
        wslay_event_recv(context);
    }
    wslay_event_context_free(context);
    state.SetItemsProcessed(state.iterations() * FramesInARead);
}
BENCHMARK(AnotherLibrarysReader);
#endif

std::string AudioFrame() {
    std::vector<std::int16_t> samples(512);
    std::iota(samples.begin(), samples.end(), std::int16_t{0});
    return SoundBody(1, samples);
}

void DecodeAFrameOf512Samples(benchmark::State& state) {
    const std::string body = AudioFrame();
    for (auto _ : state) {
        const auto frame = ReadSoundFrame(body);
        benchmark::DoNotOptimize(frame->samples.Data());
    }
}
BENCHMARK(DecodeAFrameOf512Samples);

void CopyAFrameOf512Samples(benchmark::State& state) {
    const std::string body = AudioFrame();
    for (auto _ : state) {
        const MemoryBlock block{std::string_view(body).substr(SoundFrame::HeaderSize)};
        benchmark::DoNotOptimize(block.Data());
    }
}
BENCHMARK(CopyAFrameOf512Samples);

} // namespace
} // namespace larkspool
