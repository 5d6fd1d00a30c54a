#include "platform/qt/BackgroundLog.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <thread>
#include <utility>

namespace larkspool {

namespace {

constexpr std::size_t LongestQueue = 500'000; // bytes, some hours of a busy night
constexpr std::chrono::milliseconds Patience(200);

} // namespace

struct BackgroundLog::Queue {
    explicit Queue(Append writer) : append(std::move(writer)) {}

    void Run();

    std::mutex mutex;
    std::condition_variable changed;
    std::string lines;         // not yet written
    std::size_t count = 0;     // of them
    std::uint64_t missing = 0; // lines that were dropped or refused
    bool isEnding = false;
    bool hasEnded = false;
    const Append append;
};

// The thread.
void BackgroundLog::Queue::Run() {
    std::unique_lock lock(mutex);
    while (!isEnding || !lines.empty()) {
        changed.wait(lock, [this] { return isEnding || !lines.empty(); });
        if (lines.empty()) {
            continue;
        }
        std::string text = std::exchange(lines, {});
        const std::uint64_t written = std::exchange(count, 0);
        const std::uint64_t gone = missing;
        if (gone > 0) {
            text.insert(0, "(" + std::to_string(gone) + " rows are missing here)\n");
        }
        lock.unlock();
        const bool taken = append(text);
        lock.lock();
        missing = taken ? missing - gone : missing + written;
    }
    hasEnded = true;
    changed.notify_all();
}

BackgroundLog::BackgroundLog(Append append) : queue(std::make_shared<Queue>(std::move(append))) {
    std::thread([shared = queue] { shared->Run(); }).detach();
}

BackgroundLog::~BackgroundLog() {
    std::unique_lock lock(queue->mutex);
    queue->isEnding = true;
    queue->changed.notify_all();
    queue->changed.wait_for(lock, Patience, [this] { return queue->hasEnded; });
}

void BackgroundLog::Write(std::string line) {
    const std::scoped_lock lock(queue->mutex);
    if (queue->lines.size() + line.size() > LongestQueue) {
        ++queue->missing;
        return;
    }
    queue->lines += line;
    queue->lines += '\n';
    ++queue->count;
    queue->changed.notify_all();
}

} // namespace larkspool
