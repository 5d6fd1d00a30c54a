// The directory's page beside the fastest pass over the same bytes, and what follows from it.
#include "directory/DirectoryScanner.h"
#include "directory/KiwiListClass.h"
#include "platform/PopupMenu.h"
#include "shell/App.h"
#include "support/VirtualDesktop.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

namespace larkspool {
namespace {

constexpr int Receivers = 1000;

// An entry of the size and shape that public directories have, with parts that no client reads.
std::string Entry(int number) {
    const std::string digits = std::to_string(number);
    return "<div class='cl-entry'>\n<div class='cl-id'><span class='cl-name'>Receiver " + digits +
           ", long wire, 0-30 MHz | somewhere</span>\n<a href='http://192.0.2." + digits +
           ":8073' target='_blank'>\n<img class='cl-avatar' src='http://192.0.2." + digits +
           "/kiwi/pkgs/avatar.png'></a></div>\n<div class='cl-info'>Users: 0/4<br>\nLocation: "
           "(47.6, 9.4)<br>\nAntenna: <span class='cl-antenna'>long wire, 40 m</span><br>\n"
           "Uptime: 12 days, SNR 22/28 dB, GPS: 12 fixes/min</div>\n"
           "<!-- fixes=123456 -->\n<!-- sdr_hw=a receiver with an antenna and a clock "
           "-->\n</div>\n";
}

std::string Page() {
    std::string page;
    for (int i = 0; i < Receivers; ++i) {
        page += Entry(i);
    }
    return page;
}

void ScanAPage(benchmark::State& state) {
    const std::string page = Page();
    std::size_t found = 0;
    for (auto _ : state) {
        ReceiverList list;
        DirectoryScanner(list).ScanPage(page);
        found += list.Count();
    }
    if (found != Receivers * static_cast<std::size_t>(state.iterations())) {
        state.SkipWithError("receivers are missing");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}
BENCHMARK(ScanAPage)->Unit(benchmark::kMicrosecond);

// The floor: every line's end is looked for, and nothing else is done.
void FindTheLinesOfAPage(benchmark::State& state) {
    const std::string page = Page();
    for (auto _ : state) {
        std::size_t lines = 0;
        const char* at = page.data();
        const char* const end = at + page.size();
        while (const void* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            at = static_cast<const char*>(found) + 1;
            ++lines;
        }
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}
BENCHMARK(FindTheLinesOfAPage)->Unit(benchmark::kMicrosecond);

void SearchAPageForAByteItLacks(benchmark::State& state) {
    const std::string page = Page();
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::memchr(page.data(), '\x01', page.size()));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(page.size()));
}
BENCHMARK(SearchAPageForAByteItLacks)->Unit(benchmark::kMicrosecond);

void FillThePopup(benchmark::State& state) {
    ReceiverList list;
    DirectoryScanner(list).ScanPage(Page());
    PopupMenu popup;
    for (auto _ : state) {
        popup.DeleteAllRows();
        for (const std::string& name : list.names) {
            popup.AddRow(name);
        }
        popup.SetListIndex(0);
    }
    state.SetItemsProcessed(state.iterations() * Receivers);
}
BENCHMARK(FillThePopup)->Unit(benchmark::kMicrosecond);

// All that the console does with a page, from its arrival to a filled popup.
void TakeAPage(benchmark::State& state) {
    VirtualDesktop desktop;
    Deployment deployment;
    deployment.directoryHost = "list.example";
    App app(desktop, deployment);
    app.Event_Open();
    const std::string page = Page();
    for (auto _ : state) {
        app.Console().GetKiwiList();
        desktop.httpSockets->back()->Deliver(page);
    }
    if (app.Console().PopupMenuKiwiList.ListCount() != Receivers) {
        state.SkipWithError("rows are missing");
    }
}
BENCHMARK(TakeAPage)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace larkspool
