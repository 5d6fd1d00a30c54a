#pragma once

#include "schedule/ScheduleFile.h"
#include "schedule/SkedWindow.h"
#include "support/AutoReceivers.h"
#include "support/ConsoleFixture.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace larkspool {

// What a WAV file turned out to be a recording of.
struct HeardRecording {
    std::string what; // number of the receiver and how it was tuned: "1 9410 am -5000 5000"
    double seconds = 0;

    // A few seconds pass until the receiver streams, and a tick until the end is seen.
    bool operator==(const HeardRecording& other) const;
};
std::ostream& operator<<(std::ostream& out, const HeardRecording& recording);

// The program with schedule windows, among three receivers that answer by themselves.
class ScheduleFixture : public ConsoleFixture {
  protected:
    using Recordings = std::vector<HeardRecording>;

    ScheduleFixture();

    SkedWindow& NewWindow(); // from the menu
    static std::vector<MenuItem> ContextItems(SkedWindow& window);
    static void Choose(SkedWindow& window, const std::string& contextItem);
    static void Enable(SkedWindow& window) { Choose(window, "Enable schedules"); }
    static void AddRow(SkedWindow& window, const ScheduleRow& cells);
    static void SetCell(SkedWindow& window, int row, int column, const std::string& text) {
        window.ListboxSkeds.SetCell(row, column, text);
    }
    static std::string Cell(SkedWindow& window, int row, int column) {
        return window.ListboxSkeds.Cell(row, column);
    }

    void SetClock(const std::string& utc); // "2027-01-16T22:00:00"
    void Sleep(double seconds) { desktop.Advance(seconds); }
    Recordings Heard(); // in the order in which they were begun

    const std::string First = "first.example.net:8073";
    const std::string Second = "second.example.net:8073";
    const std::string Third = "[2001:db8::3]:8074";
    AutoReceivers receivers{desktop, {First, Second, Third}};
};

} // namespace larkspool
