#include "support/ScheduleFixture.h"

#include "console/ModeSettingsClass.h"
#include "platform/Text.h"
#include "support/Files.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ostream>

namespace larkspool {

namespace {

constexpr std::size_t WavHeaderBytes = 44;
constexpr double Tolerance = 2.5; // seconds

HeardRecording Listen(const FolderItem& file) {
    const std::string bytes = ContentOf(file);
    EXPECT_GE(bytes.size(), WavHeaderBytes) << file.Name();
    std::vector<std::int16_t> samples((bytes.size() - WavHeaderBytes) / 2);
    std::memcpy(samples.data(), bytes.data() + WavHeaderBytes, samples.size() * 2);
    EXPECT_EQ(LittleEndianAt(bytes, WavHeaderBytes - 4), samples.size() * 2)
        << file.Name() << " has been left unfinished";

    HeardRecording heard;
    heard.seconds = static_cast<double>(samples.size()) / AutoReceivers::Rate;
    if (samples.size() < AutoReceivers::HeardSamples) {
        return heard;
    }
    // Every frame must tell the same: the console never recorded anything else into this file.
    for (std::size_t i = AutoReceivers::HeardSamples; i < samples.size(); ++i) {
        if (samples[i] != samples[i - AutoReceivers::HeardSamples]) {
            ADD_FAILURE() << file.Name() << " changes at sample " << i;
            break;
        }
    }
    EXPECT_EQ(samples[AutoReceivers::Marker], AutoReceivers::MarkerValue);
    heard.receiver = samples[AutoReceivers::Number];
    const auto mode = static_cast<std::size_t>(samples[AutoReceivers::ModeRow]);
    heard.tuning = Str(samples[AutoReceivers::FreqKHz]) + " " +
                   ModeSettingsClass::Captions.at(mode) + " " +
                   Str(samples[AutoReceivers::LowCut]) + " " + Str(samples[AutoReceivers::HighCut]);
    return heard;
}

} // namespace

bool HeardRecording::operator==(const HeardRecording& other) const {
    return receiver == other.receiver && tuning == other.tuning &&
           std::abs(seconds - other.seconds) <= Tolerance;
}

std::ostream& operator<<(std::ostream& out, const HeardRecording& recording) {
    return out << "receiver " << recording.receiver << ", " << recording.tuning << ", "
               << recording.seconds << " s";
}

ScheduleFixture::ScheduleFixture() {
    desktop.sound.keepsSound = false;
    Start();
    receivers.Attach();
    for (const std::string& receiver : {First, Second, Third}) {
        receivers.Add(receiver);
    }
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
    const auto number = [&utc](std::size_t at, std::size_t length = 2) {
        return WholePart<int>(Val(utc.substr(at, length)));
    };
    Date date;
    date.SetCalendarDay(number(0, 4), number(5), number(8));
    date.SetTimeOfDay(number(11), number(14), number(17));
    desktop.queue.SetNow(date.UnixSeconds());
}

void ScheduleFixture::Sleep(double seconds) {
    constexpr double Piece = 600;
    double left = seconds;
    while (left > 0) {
        desktop.Advance(std::min(left, Piece));
        left -= Piece;
        desktop.sound.TakeCalls(); // of a whole night they would fill the memory
    }
}

ScheduleFixture::Recordings ScheduleFixture::Heard() {
    Recordings heard;
    for (const FolderItem& file : ConsoleFixture::Recordings()) {
        if (file.Name().ends_with(".WAV")) {
            heard.push_back(Listen(file));
        }
    }
    return heard;
}

} // namespace larkspool
