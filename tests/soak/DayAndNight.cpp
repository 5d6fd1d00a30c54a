// day_and_night HOURS SEED: a day and a night of the whole program on the virtual desktop. Prints
// the books of every hour and what memory was held after it; 0 if every sample is accounted for.
#include "soak/Floor.h"
#include "soak/Session.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double Seconds(std::clock_t from) {
    return static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC;
}

} // namespace

int main(int count, char** arguments) {
    const double hours = count > 1 ? std::strtod(arguments[1], nullptr) : 24;
    const auto seed = count > 2 ? std::strtoul(arguments[2], nullptr, 10) : 1UL;
    if (!(hours > 0 && hours <= 1000)) {
        std::fputs("usage: day_and_night [HOURS [SEED]]\n", stderr);
        return 2;
    }
    std::printf("%.2f h, seed %lu\n", hours, seed);
    const std::clock_t start = std::clock();
    larkspool::soak::Session session(hours, static_cast<std::uint32_t>(seed));
    session.Run();
    const double whole = Seconds(start);
    const bool passed = session.PrintVerdict();
    const std::clock_t floorStart = std::clock();
    const auto read = larkspool::soak::ReadBare(hours);
    std::printf("processor time: %.1f s; the frames and rows of as many hours made and read by the "
                "bare reader: %.1f s (%lld read)\n",
                whole, Seconds(floorStart), static_cast<long long>(read));
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
