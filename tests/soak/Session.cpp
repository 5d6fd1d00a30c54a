#include "soak/Session.h"

#include "platform/Text.h"

#include <algorithm>
#include <cmath>

namespace larkspool::soak {

namespace {

constexpr double Hour = 3600; // seconds
// The files are short, so that a day holds many and the disk few.
constexpr std::int64_t SamplesOfAFile = std::int64_t{Rate} * 600;

} // namespace

Session::Session(double hours, std::uint32_t seed)
    : length(hours), books(static_cast<std::size_t>(std::ceil(hours))), chance(seed),
      receiver(desktop, books, seed + 1) {
    constexpr double Midnight = 1'800'057'600; // 2027-01-16T00:00:00Z
    desktop.queue.SetNow(Midnight - std::round(length * Hour / 2));
    desktop.ear.heard = [this](std::span<const std::int16_t> samples) {
        peer.Hear(samples);
        books.Hear(samples, State());
    };
    desktop.ear.streamed = [this](std::string_view datagram) { peer.Take(datagram); };
    app.Event_Open();
    console = &app.Console();
    console->rollOverSamples = SamplesOfAFile;
    receiver.Attach();
    console->CheckBoxReconnect.SetValue(true);
    console->CheckBoxUpdateWaterfall.SetValue(true);
    console->CheckBoxNetwork.SetValue(true);
    console->TextFieldAddress.SetText("sdr.example.net");
    OpenSchedule();
    console->PushButtonConnect.Push();
    Ask("staud:1");
    ActLater();
}

void Session::OpenSchedule() {
    desktop.Perform(MenuItem{"FileNewScheduleWindow", "", ""}, console);
    auto& window = dynamic_cast<SkedWindow&>(*desktop.windows.back());
    const auto add = [&window](const std::vector<std::string>& cells) {
        window.ListboxSkeds.AddRow(cells[0]);
        for (int column = 1; column < static_cast<int>(cells.size()); ++column) {
            window.ListboxSkeds.SetCell(window.ListboxSkeds.LastIndex(), column,
                                        cells[static_cast<std::size_t>(column)]);
        }
    };
    add({"night.example.net:8073", "", "23:55:00-00:05:00", "5000", "am", "5000"});
    for (int hour = 0; hour < 24; ++hour) {
        const auto at = [hour](const char* minutes) { return Format(hour, "00") + minutes; };
        add({"first.example.net:8073", "", at(":12:00-") + at(":27:00"), "9410", "amn", "2600"});
        add({"second.example.net:8074", "", at(":27:30-") + at(":35:00"), "1620", "usb",
             "300,2700"});
    }
    window.schedulesEnabled = true;
}

ConsoleState Session::State() {
    ConsoleState state;
    state.records = console->PushButtonRecord.Caption() == "Stop Recording";
    state.leavesQuietOut = console->SliderSquelch.Value() > 0;
    state.deadSamples =
        static_cast<std::size_t>(Val(console->TextFieldSquelchedDeadSpace.Text()) * Rate);
    return state;
}

void Session::ActLater() {
    const double pause = std::uniform_real_distribution<double>(3, 45)(chance);
    desktop.queue.After(pause, [this] {
        Act();
        ActLater();
    });
}

// What the peer's command does has been done when `wants` changes.
void Session::Ask(const std::string& command) {
    desktop.udpSockets.at(0)->Deliver(command);
    if (command.starts_with("staud:")) {
        desktop.queue.After(0, [this, wanted = command == "staud:1"] { peer.wants = wanted; });
    }
}

void Session::Act() {
    const auto pick = [this](std::initializer_list<const char*> of) {
        return std::string(std::data(of)[chance() % of.size()]);
    };
    Window1& window = *console;
    switch (chance() % 12) {
    case 0:
    case 1:
    case 2: // what records goes on for a while
        if (!State().records || chance() % 4 == 0) {
            window.PushButtonRecord.Push();
        }
        break;
    case 3:
        Ask("togglerecord");
        break;
    case 4:
    case 5:
        window.SliderSquelch.SetValue(chance() % 4 == 0 ? 0 : 7);
        break;
    case 6:
        window.TextFieldSquelchedDeadSpace.SetText(pick({"0", "0.5", "1.25", "3"}));
        break;
    case 7:
        window.TextFieldFreq.SetText(pick({"5000", "7055.5", "9410", "10000", "14074"}));
        break;
    case 8:
        Ask("ofreq:" + pick({"198000", "1620000", "15000000"}));
        Ask("mode:" + pick({"0", "3", "5"}));
        break;
    case 9:
        Ask(pick({"staud:1", "staud:1", "staud:0"}));
        break;
    case 10:
        Ask(pick({"vrxct:", "lowcut:200", "highcut:2800", "no command"}));
        break;
    default: // the user's own hand, now and then, and whenever the session is down for good
        if (chance() % 20 == 0) {
            window.PushButtonDisconnect.Push();
        } else if (!desktop.tcpSockets.at(0)->IsConnected()) {
            window.PushButtonConnect.Push();
        }
    }
}

// A file is finished when nobody holds it any more.
void Session::CountFinishedFiles() {
    std::vector<FolderItem> files;
    const FolderItem documents = desktop.Folder(SpecialFolder::Documents);
    for (const auto& entry : std::filesystem::directory_iterator(documents.Path())) {
        files.emplace_back(entry.path());
    }
    std::sort(files.begin(), files.end(),
              [](const FolderItem& a, const FolderItem& b) { return a.Name() < b.Name(); });
    for (FolderItem& file : files) {
        if (desktop.Lock(file) != nullptr) {
            books.ReadBack(file);
            file.Delete();
        }
    }
}

void Session::RunHour(double seconds) {
    constexpr double BetweenLooks = 300; // seconds, at the files
    double left = seconds;
    while (left > 0) {
        desktop.Advance(std::min(left, BetweenLooks));
        CountFinishedFiles();
        left -= BetweenLooks;
    }
}

void Session::Run() {
    for (std::size_t hour = 0; hour < books.hours.size(); ++hour) {
        books.hour = hour;
        RunHour(std::min(1.0, length - static_cast<double>(hour)) * Hour);
        // Compared is like with like: both links up, and the waterfall's picture there.
        for (int wait = 0; wait < 600 && !receiver.IsSteady(); ++wait) {
            desktop.Advance(1);
        }
        memory.push_back(MemoryNow());
    }
    desktop.quitRequested(QuitCause::User);
    desktop.Advance(0);
    books.LinkGone();
    CountFinishedFiles();
}

} // namespace larkspool::soak
