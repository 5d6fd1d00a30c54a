// A tick of a long schedule beside the least that it must do: look at every row's texts and take
// the clock for each.
#include "schedule/ScheduleTexts.h"
#include "schedule/SkedWindow.h"
#include "shell/App.h"
#include "support/VirtualDesktop.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <string>

namespace larkspool {
namespace {

constexpr int Rows = 10'000;

// The computer's own clock, because reading it is part of the cost.
class DesktopWithClock : public VirtualDesktop {
  public:
    double UtcNow() const override {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration<double>(now).count();
    }
};

// None of them is open: they are past or future, today or on other days, or unreadable.
void Fill(Listbox& list) {
    const auto clock = [](double hoursFromNow) {
        return TimeOfDayText(
            Date::FromUnixSeconds(DesktopWithClock().UtcNow() + hoursFromNow * 3600));
    };
    const std::string over = clock(-2) + "-" + clock(-1);
    const std::string ahead = clock(1) + "-" + clock(2);
    const std::array<std::array<std::string, 2>, 6> kinds = {{{"", over},
                                                              {"MWFTuThSuSa", ahead},
                                                              {"2001-03-01", over},
                                                              {"2999-12-31", ahead},
                                                              {"", "06:30:00-never"},
                                                              {"", "06:30:00"}}};
    for (int row = 0; row < Rows; ++row) {
        const auto& kind = kinds[static_cast<std::size_t>(row) % kinds.size()];
        list.AddRow("192.0.2.10:8073");
        list.SetCell(row, SkedWindow::DateColumn, kind[0]);
        list.SetCell(row, SkedWindow::TimeColumn, kind[1]);
        list.SetCell(row, SkedWindow::FreqColumn, "9410");
        list.SetCell(row, SkedWindow::ModeColumn, "am");
        list.SetCell(row, SkedWindow::FilterColumn, "-5000,5000");
    }
}

// A quarter of a second of the whole program; without the schedule enabled it is the program's
// other timers and the title.
void QuarterSecondWithTenThousandRows(benchmark::State& state) {
    DesktopWithClock desktop;
    App app(desktop, Deployment());
    app.Event_Open();
    SkedWindow window(desktop, app);
    Fill(window.ListboxSkeds);
    window.schedulesEnabled = state.range(0) == 1;
    desktop.Advance(0.25); // the first tick makes room for the results
    for (auto _ : state) {
        desktop.Advance(0.25);
    }
    if (window.state != 0) {
        state.SkipWithError("a row has started");
    }
    state.SetItemsProcessed(state.iterations() * Rows);
}
BENCHMARK(QuarterSecondWithTenThousandRows)
    ->ArgName("enabled")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMicrosecond);

void TouchEveryTextAndTakeTheClock(benchmark::State& state) {
    const DesktopWithClock desktop;
    Listbox list;
    list.columns.resize(ScheduleColumns);
    Fill(list);
    for (auto _ : state) {
        double sum = 0;
        for (int row = 0; row < Rows; ++row) {
            sum += desktop.UtcNow();
            for (int column = SkedWindow::DateColumn; column <= SkedWindow::TimeColumn; ++column) {
                for (const char letter : list.Cell(row, column)) {
                    sum += letter;
                }
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * Rows);
}
BENCHMARK(TouchEveryTextAndTakeTheClock)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace larkspool
