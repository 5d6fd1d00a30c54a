#include "support/VirtualDesktop.h"

namespace larkspool {

std::unique_ptr<WindowView> VirtualDesktop::MakeWindowView(Window& window) {
    struct View : WindowView {
        View(Window& shown, std::vector<Window*>& all) : window(shown), windows(all) {
            windows.push_back(&window);
        }
        ~View() override { std::erase(windows, &window); }
        void Changed(WindowAspect /*aspect*/) override {}
        void ComeToFront() override {
            std::erase(windows, &window);
            windows.push_back(&window);
        }
        Window& window;
        std::vector<Window*>& windows;
    };
    return std::make_unique<View>(window, windows);
}

std::unique_ptr<Timer> VirtualDesktop::MakeTimer() {
    struct QueueTimer : Timer {
        explicit QueueTimer(EventQueue& loop) : queue(loop) {}
        void SetPeriod(int milliseconds) override { period = milliseconds / 1000.0; }
        void SetMode(Mode wanted) override {
            mode = wanted;
            run = EventQueue::NewLife();
            if (mode != Mode::Off) {
                Arm();
            }
        }
        Mode RunMode() const override { return mode; }
        void Arm() {
            queue.After(period, run, [this] {
                if (mode == Mode::Multiple) {
                    Arm();
                } else {
                    mode = Mode::Off;
                }
                if (action) {
                    action();
                }
            });
        }
        EventQueue& queue;
        double period = 1; // seconds
        Mode mode = Mode::Off;
        EventQueue::Life run; // a stopped run's events are void
    };
    return std::make_unique<QueueTimer>(queue);
}

std::unique_ptr<LogFile> VirtualDesktop::MakeLogFile(RolledFile file) {
    struct WrittenAtOnce : LogFile {
        explicit WrittenAtOnce(RolledFile written) : file(std::move(written)) {}
        void Write(std::string line) override { file.Append(line + "\n"); }
        RolledFile file;
    };
    return std::make_unique<WrittenAtOnce>(std::move(file));
}

std::unique_ptr<StayAwake>
VirtualDesktop::KeepAwake(const std::string&, std::function<void(const std::string&)> answered) {
    struct Hold : StayAwake {
        explicit Hold(int& counter) : count(counter) { ++count; }
        ~Hold() override { --count; }
        int& count;
        EventQueue::Life life = EventQueue::NewLife();
    };
    auto hold = std::make_unique<Hold>(awakeHolds);
    if (answerToHold) {
        queue.After(0, hold->life,
                    [answered = std::move(answered), answer = *answerToHold] { answered(answer); });
    }
    return hold;
}

} // namespace larkspool
