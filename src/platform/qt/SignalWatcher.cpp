#include "platform/qt/SignalWatcher.h"

#include <array>
#include <csignal>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace larkspool {

namespace {

constexpr std::array WatchedSignals = {SIGINT, SIGTERM, SIGHUP};

std::array<int, 2> wakePipe = {-1, -1}; // the handler writes into the second

// Runs between any two instructions, so it only wakes the event loop.
void WakeEventLoop(int /*number*/) {
    const char byte = 1;
    [[maybe_unused]] const auto written = write(wakePipe[1], &byte, 1);
}

void Handle(int number, void (*handler)(int)) {
    struct sigaction present = {};
    if (sigaction(number, nullptr, &present) == 0 && present.sa_handler == SIG_IGN) {
        return; // the parent process wants the program to ignore the signal
    }
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
}

bool OpenPipe() {
    if (pipe(wakePipe.data()) != 0) {
        return false;
    }
    for (const int end : wakePipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

void Drain() {
    std::array<char, 16> bytes = {};
    while (read(wakePipe[0], bytes.data(), bytes.size()) > 0) {
    }
}

} // namespace

SignalWatcher::SignalWatcher(std::function<void()> signalled) {
    if (!OpenPipe()) {
        return;
    }
    notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [raise = std::move(signalled)] {
        Drain();
        raise();
    });
    for (const int number : WatchedSignals) {
        Handle(number, WakeEventLoop);
    }
    // A file at its size limit is a failed write, not the end of the program.
    Handle(SIGXFSZ, SIG_IGN);
}

SignalWatcher::~SignalWatcher() {
    if (!notifier) {
        return;
    }
    for (const int number : WatchedSignals) {
        Handle(number, SIG_DFL);
    }
    notifier.reset();
    for (int& end : wakePipe) {
        close(std::exchange(end, -1));
    }
}

} // namespace larkspool
