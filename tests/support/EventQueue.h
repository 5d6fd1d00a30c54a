#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace larkspool {

// What is due when, on a clock that moves only when the test moves it.
class EventQueue {
  public:
    double Now() const { return start + elapsed; } // seconds since 1970
    // The wall clock jumps; what is due keeps its delay.
    void SetNow(double time) { start = time - elapsed; }

    void After(double seconds, std::function<void()> event) {
        events.emplace(Key{elapsed + seconds, ++order}, std::move(event));
    }

    std::uint64_t Asked() const { return order; } // how many events so far

    void Clear() { events.clear(); } // the process has ended: nothing it asked for comes any more

    // Runs what falls due, in order, while the clock moves on by so many seconds.
    void Advance(double seconds) {
        const double end = elapsed + seconds;
        while (!events.empty() && events.begin()->first.first <= end + 1e-9) {
            auto event = events.extract(events.begin());
            MoveTo(event.key().first);
            raise(event.mapped());
        }
        MoveTo(end);
    }

    // How an event is run.
    std::function<void(const std::function<void()>&)> raise = [](const auto& event) { event(); };

  private:
    using Key = std::pair<double, std::uint64_t>; // due time, then the order of asking

    void MoveTo(double time) { elapsed = std::max(elapsed, time); }

    double start = 1'800'000'000; // 2027-01-15T08:00:00Z
    double elapsed = 0;           // seconds
    std::uint64_t order = 0;
    std::map<Key, std::function<void()>> events;
};

} // namespace larkspool
