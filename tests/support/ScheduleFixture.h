#pragma once

#include "schedule/ScheduleFile.h"
#include "schedule/SkedWindow.h"
#include "support/AutoReceivers.h"
#include "support/ConsoleFixture.h"

#include <cmath>
#include <ctime>
#include <ostream>
#include <string>
#include <vector>

namespace larkspool {

// What a WAV file turned out to be a recording of.
struct HeardRecording {
    std::string what; // number of the receiver and how it was tuned: "1 9410 am -5000 5000"
    double seconds = 0;

    // A few seconds pass until the receiver streams, and a tick until the end is seen.
    bool operator==(const HeardRecording& other) const {
        return what == other.what && std::abs(seconds - other.seconds) <= 2.5;
    }
};
inline std::ostream& operator<<(std::ostream& out, const HeardRecording& recording) {
    return out << "receiver " << recording.what << ", " << recording.seconds << " s";
}

// The program with schedule windows, among three receivers that answer by themselves.
class ScheduleFixture : public ConsoleFixture {
  protected:
    using Recordings = std::vector<HeardRecording>;

    ScheduleFixture() {
        desktop.sound.keepsSound = false;
        Start();
        receivers.Attach();
    }

    SkedWindow& NewWindow() { // from the menu
        Perform("FileNewScheduleWindow", &Console());
        return dynamic_cast<SkedWindow&>(*desktop.windows.back());
    }
    static std::vector<MenuItem> ContextItems(SkedWindow& window) {
        std::vector<MenuItem> items;
        EXPECT_TRUE(window.ListboxSkeds.constructContextualMenu(items));
        return items;
    }
    static void Choose(SkedWindow& window, const std::string& contextItem) {
        const auto items = ContextItems(window);
        const auto found = std::ranges::find(items, contextItem, &MenuItem::caption);
        ASSERT_NE(found, items.end()) << contextItem;
        EXPECT_TRUE(window.ListboxSkeds.contextualMenuAction(*found));
    }
    static void Enable(SkedWindow& window) { Choose(window, "Enable schedules"); }
    static void AddRow(SkedWindow& window, const ScheduleRow& cells) {
        window.ListboxSkeds.AddRow(cells[0]);
        for (std::size_t column = 1; column < cells.size(); ++column) {
            SetCell(window, window.ListboxSkeds.LastIndex(), static_cast<int>(column),
                    cells[column]);
        }
    }
    static void SetCell(SkedWindow& window, int row, int column, const std::string& text) {
        window.ListboxSkeds.SetCell(row, column, text);
    }
    static std::string Cell(SkedWindow& window, int row, int column) {
        return window.ListboxSkeds.Cell(row, column);
    }

    void SetClock(const std::string& utc) { // "2027-01-16T22:00:00"
        std::tm time = {};
        ASSERT_NE(strptime(utc.c_str(), "%Y-%m-%dT%H:%M:%S", &time), nullptr);
        desktop.queue.SetNow(static_cast<double>(timegm(&time)));
    }
    void Sleep(double seconds) { desktop.Advance(seconds); }

    Recordings Heard() { // in the order in which they were begun
        constexpr std::size_t FrameBytes = 2 * AutoReceivers::FrameSamples;
        Recordings heard;
        for (const FolderItem& file : ConsoleFixture::Recordings()) {
            if (!file.Name().ends_with(".WAV")) {
                continue; // a schedule
            }
            const std::string sound = SoundIn(file, AutoReceivers::Rate);
            const std::string frame = sound.substr(0, FrameBytes);
            std::string what;
            for (std::size_t i = 0; i < frame.size() && frame[i] != '\0'; i += 2) {
                what += frame[i];
            }
            // The console never recorded anything else into this file.
            for (std::size_t at = 0; at < sound.size(); at += FrameBytes) {
                EXPECT_EQ(sound.compare(at, FrameBytes, frame), 0) << what << " changes at " << at;
            }
            heard.push_back({what, static_cast<double>(sound.size()) / 2 / AutoReceivers::Rate});
        }
        return heard;
    }

    const std::string First = "first.example.net:8073";
    const std::string Second = "second.example.net:8073";
    const std::string Third = "[2001:db8::3]:8074";
    AutoReceivers receivers{desktop, {First, Second, Third}};
};

} // namespace larkspool
