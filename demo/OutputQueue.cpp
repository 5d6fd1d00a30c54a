#include "demo/OutputQueue.h"

#include <algorithm>
#include <utility>

namespace larkspool::demo {

void OutputQueue::Push(std::vector<std::uint8_t> bytes, TimePoint notBefore) {
    if (bytes.empty()) {
        return;
    }
    if (!pieces.empty()) {
        notBefore = std::max(notBefore, pieces.back().notBefore);
    }
    pieces.push_back({std::move(bytes), notBefore});
}

std::span<const std::uint8_t> OutputQueue::Ready(TimePoint now) const {
    if (pieces.empty() || pieces.front().notBefore > now) {
        return {};
    }
    return std::span(pieces.front().bytes).subspan(written);
}

void OutputQueue::Consume(std::size_t count) {
    written += count;
    if (written >= pieces.front().bytes.size()) {
        pieces.pop_front();
        written = 0;
    }
}

std::optional<TimePoint> OutputQueue::NextTime() const {
    if (pieces.empty()) {
        return std::nullopt;
    }
    return pieces.front().notBefore;
}

} // namespace larkspool::demo
