// How long a program takes from its start to its painted window, whatever toolkit it is made with:
// watches the memory that a display in memory (Xvfb -fbdir) paints into.
//   first_paint FRAMEBUFFER RUNS COMMAND...  prints milliseconds and processor milliseconds a run
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <span>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Pixels = std::span<const volatile std::uint32_t>;

constexpr std::size_t Step = 61; // every how many pixels are looked at
constexpr std::size_t EnoughPixels =
    250'000; // more than a frame around a window, less than either window
constexpr std::chrono::microseconds Pause{250};
constexpr std::chrono::seconds Patience{20};

Pixels MapScreen(const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    struct stat about = {};
    if (file < 0 || fstat(file, &about) != 0) {
        return {};
    }
    const auto size = static_cast<std::size_t>(about.st_size);
    const void* const memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, file, 0);
    close(file);
    if (memory == MAP_FAILED) {
        return {};
    }
    // The few hundred words of header and color table in front don't change.
    return {static_cast<const volatile std::uint32_t*>(memory), size / sizeof(std::uint32_t)};
}

std::size_t LitPixels(Pixels screen) {
    std::size_t lit = 0;
    for (std::size_t i = 0; i < screen.size(); i += Step) {
        lit += (screen[i] & 0xffffffU) != 0 ? Step : 0;
    }
    return lit;
}

// Of all threads so far, those that have ended included.
double ProcessorMilliseconds(pid_t process) {
    clockid_t clock = {};
    timespec spent = {};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &spent) != 0) {
        return 0.0;
    }
    return static_cast<double>(spent.tv_sec) * 1e3 + static_cast<double>(spent.tv_nsec) / 1e6;
}

template <typename Condition>
bool Await(Condition isMet) {
    const auto end = Clock::now() + Patience;
    while (!isMet()) {
        if (Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(Pause);
    }
    return true;
}

bool MeasureOnce(Pixels screen, char** command) {
    const std::size_t before = LitPixels(screen);
    const auto start = Clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execv(command[0], command);
        _exit(127);
    }
    const bool painted =
        child > 0 && Await([&] { return LitPixels(screen) >= before + EnoughPixels; });
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    const double processor = painted ? ProcessorMilliseconds(child) : 0.0;
    if (child > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        kill(child, SIGTERM);
        waitpid(child, nullptr, 0);
    }
    std::printf("%.1f %.1f\n", taken.count(), processor);
    return painted && Await([&] { return LitPixels(screen) <= before + EnoughPixels / 10; });
}

} // namespace

int main(int argc, char** argv) {
    const Pixels screen = argc > 3 ? MapScreen(argv[1]) : Pixels();
    if (screen.empty()) {
        std::fputs("usage: first_paint FRAMEBUFFER RUNS COMMAND...\n", stderr);
        return 2;
    }
    for (int run = std::atoi(argv[2]); run > 0; --run) {
        if (!MeasureOnce(screen, argv + 3)) {
            return 1;
        }
    }
    return 0;
}
