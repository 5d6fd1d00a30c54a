#include "support/ScheduleFixture.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <ostream>

namespace larkspool {

bool HeardRecording::operator==(const HeardRecording& other) const {
    constexpr double Tolerance = 2.5; // seconds
    return what == other.what && std::abs(seconds - other.seconds) <= Tolerance;
}

std::ostream& operator<<(std::ostream& out, const HeardRecording& recording) {
    return out << "receiver " << recording.what << ", " << recording.seconds << " s";
}

ScheduleFixture::ScheduleFixture() {
    desktop.sound.keepsSound = false;
    Start();
    receivers.Attach();
}

SkedWindow& ScheduleFixture::NewWindow() {
    Perform("FileNewScheduleWindow", &Console());
    return dynamic_cast<SkedWindow&>(*desktop.windows.back());
}

std::vector<MenuItem> ScheduleFixture::ContextItems(SkedWindow& window) {
    std::vector<MenuItem> items;
    EXPECT_TRUE(window.ListboxSkeds.constructContextualMenu(items));
    return items;
}

void ScheduleFixture::Choose(SkedWindow& window, const std::string& contextItem) {
    const auto items = ContextItems(window);
    const auto found = std::find_if(items.begin(), items.end(), [&contextItem](const auto& item) {
        return item.caption == contextItem;
    });
    ASSERT_NE(found, items.end()) << contextItem;
    EXPECT_TRUE(window.ListboxSkeds.contextualMenuAction(*found));
}

void ScheduleFixture::AddRow(SkedWindow& window, const ScheduleRow& cells) {
    window.ListboxSkeds.AddRow(cells[0]);
    for (std::size_t column = 1; column < cells.size(); ++column) {
        SetCell(window, window.ListboxSkeds.LastIndex(), static_cast<int>(column), cells[column]);
    }
}

void ScheduleFixture::SetClock(const std::string& utc) {
    std::tm time = {};
    ASSERT_NE(strptime(utc.c_str(), "%Y-%m-%dT%H:%M:%S", &time), nullptr);
    desktop.queue.SetNow(static_cast<double>(timegm(&time)));
}

ScheduleFixture::Recordings ScheduleFixture::Heard() {
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
        // Every frame must tell the same: the console never recorded anything else into this file.
        for (std::size_t at = 0; at < sound.size(); at += FrameBytes) {
            if (sound.compare(at, FrameBytes, frame) != 0) {
                what += " changes at byte " + std::to_string(at);
                break;
            }
        }
        heard.push_back({what, static_cast<double>(sound.size()) / 2 / AutoReceivers::Rate});
    }
    return heard;
}

} // namespace larkspool
