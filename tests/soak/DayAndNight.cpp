// day_and_night [HOURS [SEED]]: a day and a night of the whole program on the virtual desktop,
// around a midnight. Prints the books after every hour and what memory is held then; fails unless
// every sample is accounted for and memory stays flat.
#include "platform/Text.h"
#include "soak/Books.h"
#include "support/Allocations.h"
#include "support/ScheduleFixture.h"

#include <cmath>
#include <cstdio>
#include <random>

#include <malloc.h>

namespace larkspool {
namespace {

constexpr int SamplesPerSecond = 12000; // samples a second
constexpr double RowPeriod = 1.0 / 25;  // seconds, of the waterfall
constexpr double Hour = 3600;           // seconds
double hours = 24;
int seed = 1;

class Chance {
  public:
    explicit Chance(int itsSeed) : dice(static_cast<std::uint32_t>(itsSeed)) {}

    double Between(double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(dice);
    }
    bool Happens(double every, double within) { return Between(0, every) < within; } // seconds
    std::size_t Whole(double least, double most) {
        return static_cast<std::size_t>(Between(least, most));
    }
    std::string Pick(std::initializer_list<const char*> of) {
        return std::data(of)[dice() % of.size()];
    }

  private:
    std::mt19937_64 dice;
};

// Receivers as bad nights have them: transmissions with pauses between them, frames that get lost
// one by one and in bursts, links that break in the middle of a frame, minutes in which they are
// gone or full, seconds in which they say nothing.
class TroubledReceivers : public AutoReceivers {
  public:
    TroubledReceivers(VirtualDesktop& host, Books& account)
        : AutoReceivers(host, {"sdr.example.net:8073", "first.example.net:8073",
                               "second.example.net:8074", "night.example.net:8073"}),
          books(account) {
        // As many as fill the console's bounded texts within the first hour.
        gatewayHeaders = "Set-Cookie: " + std::string(3000, 'c') + "\r\n";
    }

    bool IsSteady() const { // both links have been up for a while
        return desktop.tcpSockets.at(0)->IsConnected() && desktop.tcpSockets.at(1)->IsConnected() &&
               desktop.UtcNow() > lastConnect + 5;
    }

    int cuts = 0;
    int rows = 0;

  private:
    int SampleRate() const override { return SamplesPerSecond; }
    bool Answers(const VirtualTCPSocket& socket) override {
        if (IsAudio(socket)) {
            books.LinkGone();
            areFull = chance.Happens(10, 1);
            lastConnect = desktop.UtcNow();
        }
        return desktop.UtcNow() >= goneUntil;
    }

    double SendNext(VirtualTCPSocket& socket) override {
        constexpr double CutWaterfall = 1500; // mean seconds between the troubles
        constexpr double SilentSpell = 900;
        socket.TakeSent();
        if (!IsAudio(socket)) {
            socket.Deliver(row);
            ++rows;
            if (chance.Happens(CutWaterfall, RowPeriod)) {
                socket.Fail();
            }
            return RowPeriod;
        }
        if (desktop.UtcNow() >= stretchEnd) {
            isQuiet = !isQuiet;
            stretchEnd = desktop.UtcNow() + chance.Between(0.5, isQuiet ? 12 : 20);
        }
        const Samples frame = books.Next(chance.Whole(256, 768), isQuiet);
        const double lasts = static_cast<double>(frame.size()) / SamplesPerSecond;
        SendFrame(socket, frame, lasts);
        return chance.Happens(SilentSpell, lasts) ? chance.Between(2, 40) : lasts;
    }

    void SendFrame(VirtualTCPSocket& socket, const Samples& frame, double lasts) {
        constexpr double CutAudio = 400; // mean seconds between the troubles
        constexpr double BurstOfLosses = 30;
        constexpr double SingleLoss = 1.2;
        const std::string wire = ServerFrame("SND" + SoundBody(++sequence, frame, 600));
        if (chance.Happens(CutAudio, lasts)) {
            Cut(socket, wire);
            lossesToCome = 1;
        } else if (chance.Happens(BurstOfLosses, lasts)) {
            lossesToCome = chance.Whole(1, 40);
        } else if (lossesToCome == 0 && chance.Happens(SingleLoss, lasts)) {
            lossesToCome = 1;
        }
        if (lossesToCome > 0) {
            --lossesToCome;
            books.Lose(frame);
        } else {
            books.Travel(frame);
            socket.Deliver(wire);
        }
    }

    // The link breaks with part of a frame on it; half of the time the receiver stays away.
    void Cut(VirtualTCPSocket& socket, std::string_view wire) {
        ++cuts;
        socket.Deliver(wire.substr(0, chance.Whole(0, static_cast<double>(wire.size()))));
        socket.Fail();
        if (chance.Happens(2, 1)) {
            goneUntil = desktop.UtcNow() + chance.Between(60, 200);
            desktop.tcpSockets.at(1)->Fail();
        }
    }

    Books& books;
    Chance chance{seed + 1};
    const std::string row = ServerFrame("W/F" + std::string(13 + 1024, 'w'));
    std::size_t lossesToCome = 0; // frames
    double stretchEnd = 0;        // when a transmission or a pause ends
    bool isQuiet = false;
    double goneUntil = 0;
    double lastConnect = 0;
};

// What the program holds at a moment, in bytes.
struct Memory {
    std::int64_t made = 0; // by new and not yet deleted
    std::int64_t heap = 0; // by the allocator's own statistics; 0 where it keeps none

    static Memory Now() {
        Memory now{Allocations::OfThisThread().bytes};
#ifdef __GLIBC__
        const auto heap = mallinfo2();
        now.heap = static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
#endif
        return now;
    }
};

// The whole program among receivers with troubles, a user who never rests, a schedule, and a peer
// on the network that asks for the sound and gives it up again.
class DayAndNight : public ScheduleFixture {
  protected:
    DayAndNight() {
        constexpr double Midnight = 1'800'057'600; // 2027-01-16T00:00:00Z
        desktop.queue.SetNow(Midnight - std::round(hours * Hour / 2));
        desktop.sound.heard = [this](std::span<const std::int16_t> samples) { Hear(samples); };
        desktop.sound.sent = [this](std::int64_t port, std::string_view bytes) {
            constexpr std::int64_t StreamPort = 58286;
            if (port == StreamPort) {
                TakeStreamed(bytes);
            }
        };
        troubled.Attach();
        // The files are short, so that a day holds many and the disk few.
        Console().rollOverSamples = std::int64_t{SamplesPerSecond} * 600;
        Console().CheckBoxReconnect.SetValue(true);
        Console().CheckBoxUpdateWaterfall.SetValue(true);
        Console().CheckBoxNetwork.SetValue(true);
        Console().TextFieldAddress.SetText("sdr.example.net");
        FillSchedule();
        Console().PushButtonConnect.Push();
        Ask("staud:1");
        ActLater();
    }

    void FillSchedule() {
        SkedWindow& window = NewWindow();
        AddRow(window, {"night.example.net:8073", "", "23:55:00-00:05:00", "5000", "am", "5000"});
        for (int hour = 0; hour < 24; ++hour) {
            const auto at = [hour](const char* minutes) { return Format(hour, "00") + minutes; };
            AddRow(window, {"first.example.net:8073", "", at(":12:00-") + at(":27:00"), "9410",
                            "amn", "2600"});
            AddRow(window, {"second.example.net:8074", "", at(":27:30-") + at(":35:00"), "1620",
                            "usb", "300,2700"});
        }
        Enable(window);
    }

    bool Records() { return Console().PushButtonRecord.Caption() == "Stop Recording"; }

    void Hear(std::span<const std::int16_t> samples) {
        const double dead = Val(Console().TextFieldSquelchedDeadSpace.Text());
        const ConsoleState state{Records(), Console().SliderSquelch.Value() > 0,
                                 static_cast<std::size_t>(dead * SamplesPerSecond)};
        EXPECT_TRUE(books.Hear(samples, state)) << "heard what was not sent";
        if (peerListens) {
            pending.append(reinterpret_cast<const char*>(samples.data()), samples.size_bytes());
        }
    }

    // Every datagram must hold the samples that were heard, in order, and the next number.
    void TakeStreamed(std::string_view datagram) {
        constexpr std::size_t SoundBytes = 1024;
        std::string expected = pending.substr(0, SoundBytes);
        expected += {static_cast<char>(streamed & 0xFFU), static_cast<char>(streamed >> 8U & 0xFFU),
                     '\0', '\0'};
        EXPECT_TRUE(datagram == expected) << "datagram " << streamed << " is not what was heard";
        pending.erase(0, SoundBytes);
        ++streamed;
    }

    // What the peer's command does has been done when `peerListens` changes.
    void Ask(const std::string& command) {
        desktop.udpSockets.at(0)->Deliver(command);
        if (command.starts_with("staud:")) {
            desktop.queue.After(0, [this, on = command == "staud:1"] { peerListens = on; });
        }
    }

    void ActLater() {
        desktop.queue.After(chance.Between(3, 45), [this] {
            Act();
            ActLater();
        });
    }

    void Act() {
        Ask(chance.Pick({"staud:1", "staud:1", "staud:0", "ofreq:198000", "ofreq:1620000", "mode:0",
                         "mode:3", "vrxct:", "lowcut:200", "highcut:2800", "no command"}));
        Console().SliderSquelch.SetValue(chance.Happens(4, 1) ? 0 : 7);
        Console().TextFieldSquelchedDeadSpace.SetText(chance.Pick({"0", "0.5", "1.25", "3"}));
        Console().TextFieldFreq.SetText(chance.Pick({"5000", "7055.5", "9410", "14074"}));
        if (chance.Happens(12, 1)) {
            Ask("togglerecord");
        }
        if (!Records() && chance.Happens(4, 1)) {
            Console().PushButtonRecord.Push();
        }
        if (chance.Happens(120, 1)) {
            Console().PushButtonDisconnect.Push();
        } else if (!Audio().socket.IsConnected() && chance.Happens(6, 1)) { // and isn't coming back
            Console().PushButtonConnect.Push();
        }
    }

    // A file is finished when nobody holds it any more.
    void ReadFinishedFiles() {
        for (FolderItem& file : ConsoleFixture::Recordings()) {
            if (desktop.Lock(file) != nullptr) {
                EXPECT_TRUE(books.ReadBack(SoundIn(file, SamplesPerSecond)))
                    << file.Name() << " is not what was sent";
                ++files;
                file.Delete();
            }
        }
        EXPECT_EQ(books.Unexplained(), books.OnTheWay());
    }

    void Run(double seconds) {
        constexpr double BetweenLooks = 300; // seconds, at the files
        const double end = desktop.UtcNow() + seconds;
        while (desktop.UtcNow() < end) {
            desktop.Advance(std::min(end - desktop.UtcNow(), BetweenLooks));
            ReadFinishedFiles();
        }
        // Compared is like with like: both links up, and the waterfall's picture there.
        for (int wait = 0; wait < 600 && !troubled.IsSteady(); ++wait) {
            desktop.Advance(1);
        }
    }

    Books books;
    Chance chance{seed};
    TroubledReceivers troubled{desktop, books};
    std::string pending; // heard, and not yet streamed
    bool peerListens = false;
    unsigned streamed = 0; // datagrams
    int files = 0;
};

TEST_F(DayAndNight, EverySampleIsAccountedForAndMemoryStaysFlat) {
    constexpr std::int64_t MostGrowth = std::int64_t{64} * 1024; // log rows differ in length
    constexpr double KiB = 1024;
    std::printf("hours        sent    in files    left out        lost  no record.    +silence"
                "     to come   new, KiB  heap, KiB\n");
    std::optional<Memory> first;
    Memory last;
    for (int hour = 0; hour < hours; ++hour) {
        Run(std::min(1.0, hours - hour) * Hour);
        last = Memory::Now();
        first = first.value_or(last);
        std::printf("%5d", hour + 1);
        for (const std::int64_t samples : {books.sent, books.inFiles, books.leftOut, books.lost,
                                           books.idle, books.silence, books.Unexplained()}) {
            std::printf(" %11lld", static_cast<long long>(samples));
        }
        std::printf(" %10.1f %10.1f\n", static_cast<double>(last.made) / KiB,
                    static_cast<double>(last.heap) / KiB);
    }
    Quit();
    books.LinkGone();
    ReadFinishedFiles();
    EXPECT_EQ(books.Unexplained(), 0) << "the books don't balance";
    EXPECT_LE(last.made - first->made, MostGrowth);
    EXPECT_LE(last.heap - first->heap, MostGrowth);
    EXPECT_EQ(desktop.boxes, Strings{});
    EXPECT_TRUE(files > 0 && streamed > 0 && troubled.cuts > 0) << "too short";
    std::printf("%d rows, %d cuts in a frame, %d files, %u datagrams of sound\n", troubled.rows,
                troubled.cuts, files, streamed);
}

} // namespace
} // namespace larkspool

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    using namespace larkspool;
    hours = count > 1 ? Val(arguments[1]) : hours;
    seed = count > 2 ? WholePart<int>(Val(arguments[2])) : seed;
    std::printf("%.2f h, seed %d\n", hours, seed);
    return RUN_ALL_TESTS();
}
