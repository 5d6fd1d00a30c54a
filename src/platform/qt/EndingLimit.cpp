#include "platform/qt/EndingLimit.h"

#include <csignal>

#include <sys/time.h>
#include <unistd.h>

namespace larkspool {

namespace {

constexpr suseconds_t Patience = 300'000; // microseconds

volatile std::sig_atomic_t exitCode = 0;

extern "C" void EndNow(int) { _exit(exitCode); }

} // namespace

void EndingLimit::Start(int code) {
    exitCode = code;
    isRunning = true;
    std::signal(SIGALRM, EndNow);
    const itimerval limit = {.it_interval = {}, .it_value = {.tv_sec = 0, .tv_usec = Patience}};
    setitimer(ITIMER_REAL, &limit, nullptr);
}

EndingLimit::~EndingLimit() {
    if (isRunning) {
        const itimerval none = {};
        setitimer(ITIMER_REAL, &none, nullptr);
    }
}

} // namespace larkspool
