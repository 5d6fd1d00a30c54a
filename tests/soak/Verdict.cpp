#include "soak/Session.h"

#include <cstdio>

namespace larkspool::soak {

namespace {

// What may be held more after the last hour than after the first: log rows differ in length.
constexpr std::int64_t MostGrowth = std::int64_t{64} * 1024; // bytes
constexpr double KiB = 1024;

void PrintBook(const char* name, const HourBook& book) {
    std::printf("%5s %12lld %12lld %11lld %10lld %11lld %10lld %6lld\n", name,
                static_cast<long long>(book.sent), static_cast<long long>(book.recorded),
                static_cast<long long>(book.leftOut), static_cast<long long>(book.lost),
                static_cast<long long>(book.idle), static_cast<long long>(book.silence),
                static_cast<long long>(book.Difference()));
}

} // namespace

void Session::PrintHours() const {
    std::printf("%5s %12s %12s %11s %10s %11s %10s %6s\n", "hour", "sent", "recorded", "left out",
                "lost", "no record.", "+silence", "diff.");
    HourBook all;
    int number = 0;
    for (const HourBook& book : books.hours) {
        PrintBook(std::to_string(++number).c_str(), book);
        all.sent += book.sent;
        all.recorded += book.recorded;
        all.leftOut += book.leftOut;
        all.lost += book.lost;
        all.idle += book.idle;
        all.silence += book.silence;
    }
    PrintBook("all", all);
}

bool Session::PrintMemory() const {
    std::printf("%5s %10s %14s %14s %14s\n", "hour", "pieces", "in them, KiB", "heap, KiB",
                "resident, KiB");
    int number = 0;
    for (const Memory& now : memory) {
        std::printf("%5d %10lld %14.1f %14.1f %14.1f\n", ++number,
                    static_cast<long long>(now.pieces), static_cast<double>(now.bytes) / KiB,
                    static_cast<double>(now.allocated) / KiB,
                    static_cast<double>(now.resident) / KiB);
    }
    const std::int64_t growth = memory.back().bytes - memory.front().bytes;
    const std::int64_t heap = memory.back().allocated - memory.front().allocated;
    if (memory.size() > 1) {
        std::printf("held more after the last hour than after the first: %.1f KiB made by new, "
                    "%.1f KiB of the heap\n",
                    static_cast<double>(growth) / KiB, static_cast<double>(heap) / KiB);
    }
    return growth <= MostGrowth && heap <= MostGrowth;
}

bool Session::PrintVerdict() const {
    PrintHours();
    const bool flat = PrintMemory();
    std::printf("%lld frames, %lld rows, %lld connections, %lld cuts in a frame, %lld files, "
                "%lld datagrams of sound\n",
                static_cast<long long>(receiver.frames), static_cast<long long>(receiver.rows),
                static_cast<long long>(receiver.connects), static_cast<long long>(receiver.cuts),
                static_cast<long long>(books.files), static_cast<long long>(peer.datagrams));
    bool even = books.files > 0 && peer.datagrams > 0;
    for (const HourBook& book : books.hours) {
        even = even && book.Difference() == 0 && book.recorded > 0;
    }
    for (const std::string& fault : books.faults) {
        std::printf("FAULT: %s\n", fault.c_str());
    }
    for (const std::string& box : desktop.boxes) {
        std::printf("A box was shown: %s\n", box.c_str());
    }
    if (peer.faults > 0) {
        std::printf("FAULT: %lld datagrams are not what was heard\n",
                    static_cast<long long>(peer.faults));
    }
    const bool passed =
        even && flat && books.faults.empty() && peer.faults == 0 && desktop.boxes.empty();
    std::printf("%s\n", passed  ? "Passed: every sample is accounted for."
                        : !even ? "FAILED: the books don't balance."
                        : !flat ? "FAILED: memory has grown."
                                : "FAILED.");
    return passed;
}

} // namespace larkspool::soak
