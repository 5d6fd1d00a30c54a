#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace larkspool {

// What is due when, on a clock that moves only when the test moves it.
class EventQueue {
  public:
    using Event = std::function<void()>;
    using Life = std::shared_ptr<int>; // its end makes events void
    static Life NewLife() { return std::make_shared<int>(0); }

    double Now() const { return start + elapsed; } // seconds since 1970
    // The wall clock jumps; what is due keeps its delay.
    void SetNow(double time) { start = time - elapsed; }

    void After(double seconds, Event event) {
        events.emplace(Key{elapsed + seconds, ++order}, std::move(event));
    }
    void After(double seconds, const Life& life, Event event) {
        After(seconds, [token = std::weak_ptr<int>(life), event = std::move(event)] {
            if (!token.expired()) {
                event();
            }
        });
    }
    // Calls a handler that lives as long, and may be empty by then.
    void Call(const Life& life, const Event& handler) {
        After(0, life, [&handler] {
            if (handler) {
                handler();
            }
        });
    }

    std::uint64_t Asked() const { return order; } // how many events so far

    void Clear() { events.clear(); } // the process has ended: nothing it asked for comes any more

    // Runs what falls due, in order, while the clock moves on by so many seconds.
    void Advance(double seconds) {
        const double end = elapsed + seconds;
        while (!events.empty() && events.begin()->first.first <= end + 1e-9) {
            auto event = events.extract(events.begin());
            elapsed = std::max(elapsed, event.key().first);
            raise(event.mapped());
        }
        elapsed = std::max(elapsed, end);
    }

    std::function<void(const Event&)> raise; // how an event is run

  private:
    using Key = std::pair<double, std::uint64_t>; // due time, then the order of asking

    double start = 1'800'000'000; // 2027-01-15T08:00:00Z
    double elapsed = 0;           // seconds
    std::uint64_t order = 0;
    std::map<Key, Event> events;
};

} // namespace larkspool
