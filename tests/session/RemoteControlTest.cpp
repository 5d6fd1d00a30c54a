#include "support/ConsoleFixture.h"

#include <numeric>

namespace larkspool {
namespace {

// Another program at the controls.
class RemoteControl : public ConsoleFixture {
  protected:
    using Sent = std::vector<std::pair<std::int64_t, std::string>>;

    static constexpr std::int64_t TextPort = 58283;
    static constexpr std::int64_t SoundPort = 58286;

    VirtualUDPSocket& Socket() { return *desktop.udpSockets.at(0); }
    void Say(std::string datagram) {
        Socket().Deliver(std::move(datagram));
        desktop.Advance(0);
    }
    Sent Take() { return std::exchange(desktop.sound.datagrams, {}); }
    static std::pair<std::int64_t, std::string> Text(const std::string& text) {
        return {TextPort, text + '\0'};
    }

    void StartWithNetwork() {
        Start();
        Console().CheckBoxNetwork.SetValue(true);
    }
    void Hear(std::size_t count) { // one frame of so many samples, and the tick after it
        std::vector<std::int16_t> samples(count);
        std::iota(samples.begin(), samples.end(), std::int16_t{-7});
        Audio().Sound(frame++, samples);
        desktop.Advance(0.02);
    }
    static std::vector<unsigned> Numbers(const Sent& sent) {
        std::vector<unsigned> numbers;
        for (const auto& [port, bytes] : sent) {
            if (port == SoundPort) {
                EXPECT_EQ(bytes.size(), 1028U);
                numbers.push_back(static_cast<std::uint8_t>(bytes.at(1024)) +
                                  256U * static_cast<std::uint8_t>(bytes.at(1025)));
            }
        }
        return numbers;
    }
    // By its color and, for eyes that don't see it, in words.
    bool SaysStreaming() {
        const bool isRed = Console().LabelStreaming.TextColor() == Color{255, 0, 0};
        EXPECT_EQ(Console().LabelStreaming.Text(), isRed ? "Streaming on" : "Streaming");
        EXPECT_EQ(Console().LabelStreaming.spokenName, isRed ? "Streaming on" : "Streaming off");
        return isRed;
    }

    std::uint32_t frame = 0;
};

TEST_F(RemoteControl, APeerTakesTheConsoleThroughAWholeSession) {
    StartWithNetwork();
    Say("address:sdr.example.net\r\n");
    Say("01ofreq:7055000\n");
    Say("mode:4");
    Say("lowcut:-2700");
    Say("highcut:-100");
    Say("connect");
    EXPECT_EQ(Audio().socket.connects, 0) << "the receiver must see the old session go first";
    desktop.Advance(1);
    EXPECT_EQ(Audio().socket.address, "sdr.example.net");
    Answer();
    Say("ofreq:14074000");
    EXPECT_EQ(Audio().TakeCommands().back(), "SET mod=lsb low_cut=-2700 high_cut=-100 freq=14074");
    desktop.Advance(0.1);
    Say("togglerecord");
    EXPECT_EQ(Recordings().size(), 1U);
    Say("togglerecord");
    Say("disconnect");
    EXPECT_FALSE(Audio().socket.IsConnected());
    EXPECT_TRUE(LogHas("ofreq:7055000")) << "without what is not part of the command";
    for (int i = 0; i < 3000; ++i) {
        Say("\xff flood " + std::to_string(i));
    }
    Say("ofreq:7000000");
    EXPECT_EQ(Console().TextFieldFreq.Text(), "7000");
    EXPECT_EQ(Log().size(), 2000U) << "the newest rows";
}

TEST_F(RemoteControl, EachWordIsReadInThePeersWay) {
    StartWithNetwork();
    auto& c = Console();
    const int rows[] = {0, 9, 6, 3, 2, 4, 4, 6}; // of the modes, by the peers' numbers
    for (std::size_t code = 0; code < std::size(rows); ++code) {
        Say("mode:" + std::to_string(code) + ".9");
        EXPECT_EQ(c.PopupMenuMode.ListIndex(), rows[code]) << code;
    }
    const std::string a150(150, 'a');
    for (const auto& [datagram, field, text] :
         {std::tuple<std::string, const TextField*, std::string>{"ofreq:7055123.5",
                                                                 &c.TextFieldFreq, "7055.1235"},
          {"ofreq:loud", &c.TextFieldFreq, "0"},
          {"low\ncut:-2700\r", &c.TextFieldLowCut, "-2700"}, // one line end is taken off
          {"00highcut:2700\n", &c.TextFieldHighCut, "2700"},
          {"address:" + a150, &c.TextFieldAddress, a150},
          {"00address:" + a150, &c.TextFieldAddress, a150.substr(0, 92)}}) {
        Say(datagram);
        EXPECT_EQ(field->Text(), text) << datagram;
    }
    Take();
    for (const char* none : {"", "c", "99", "CONNECT", " connect", "vrxct", "mode", "5ofreq:1000",
                             "123connect", "reconnect", "mode:8", "mode:-1", "mode:1e300"}) {
        Say(none);
    }
    desktop.Advance(2);
    EXPECT_EQ(Audio().socket.connects, 0);
    EXPECT_EQ(c.PopupMenuMode.ListIndex(), 6);
    EXPECT_TRUE(Take().empty());
    for (const auto& [blanks, streams] : {std::pair(99U, true), {100U, false}}) {
        Say("staud:" + std::string(blanks, ' ') + "1.9"); // no more is looked at
        EXPECT_EQ(Take().size(), streams ? 1U : 0U) << blanks;
    }
}

TEST_F(RemoteControl, APeerIsToldFrequenciesAndTheRateAndPressesNothingThatTheUserCannot) {
    StartWithNetwork();
    Say("ofreq:7074000");
    Say("ofreq:7074000"); // nothing new
    Console().TextFieldFreq.SetText("9999.5");
    EXPECT_EQ(Take(), (Sent{Text("freq:007074000"), Text("freq:009999500")}));
    Say("vrxct:");
    EXPECT_EQ(Take(), (Sent{Text("vrxcount:1"), Text("streamrate:12001")})) << "a guess";
    Say("togglerecord");
    desktop.Advance(1);
    EXPECT_TRUE(Recordings().empty());
    Say("connect"); // to nowhere
    EXPECT_EQ(desktop.boxes.size(), 1U);
    desktop.Advance(2);
    EXPECT_EQ(Audio().socket.connects, 0);
    PressConnect();
    Answer("12000.9");
    Console().PushButtonDisconnect.Push();
    Say("staud:1");
    EXPECT_EQ(Take(), Sent{Text("streamrate:12000.9")});
    Console().CheckBoxNetwork.SetValue(false);
    Say("ofreq:5000000");
    EXPECT_EQ(Console().TextFieldFreq.Text(), "5000") << "the socket still obeys";
    EXPECT_TRUE(Take().empty());
}

TEST_F(RemoteControl, TheBoxIsRememberedAndBindsTheSocketOnce) {
    Start();
    EXPECT_FALSE(Socket().bound);
    for (const bool ticked : {true, false, true}) {
        Console().CheckBoxNetwork.SetValue(ticked);
    }
    EXPECT_EQ(Log(), Strings{"last error 0"});
    Restart();
    EXPECT_TRUE(Console().CheckBoxNetwork.Value());
    EXPECT_TRUE(Socket().bound);
    EXPECT_EQ(Socket().port, 58284);
    Console().CheckBoxNetwork.SetValue(false);
    Restart();
    EXPECT_FALSE(Socket().bound);
    Socket().lastError = 98;
    Console().CheckBoxNetwork.SetValue(true);
    EXPECT_TRUE(LogHas("last error 98"));
    Take();
    Console().TextFieldFreq.SetText("5000");
    EXPECT_EQ(Take(), Sent{Text("freq:005000000")}) << "the console works with a taken port";
}

TEST_F(RemoteControl, TheStreamCarriesTheSoundThatIsHeardAndKeepsItsPlace) {
    StartWithNetwork();
    ConnectAndStream();
    Hear(512);
    EXPECT_TRUE(Take().empty()) << "nobody has asked yet";
    desktop.sound.played.clear();
    Say("staud:1");
    Take();
    for (const std::size_t samples : {512U, 700U, 1300U}) {
        Hear(samples);
    }
    EXPECT_TRUE(SaysStreaming());
    const Sent sent = Take();
    ASSERT_EQ(Numbers(sent), (std::vector<unsigned>{0, 1, 2, 3}));
    const auto& heard = desktop.sound.played;
    ASSERT_EQ(heard.size(), 2512U); // 464 of them wait in a block
    for (std::size_t i = 0; i < 2048; ++i) {
        const MemoryBlock block(std::string_view(sent[i / 512].second));
        ASSERT_EQ(block.Int16(i % 512 * 2, NativeByteOrder), heard[i]) << i;
    }

    Say("staud:0");
    desktop.Advance(0.02);
    EXPECT_FALSE(SaysStreaming());
    Hear(5000);
    Console().PushButtonDisconnect.Push();
    desktop.Advance(2);
    const std::uint64_t before = desktop.queue.Asked();
    desktop.Advance(10);
    EXPECT_LE(desktop.queue.Asked() - before, 130U) << "twelve a second, and no keep-alives";
    Say("staud:1");
    ConnectAndStream(); // a new session goes on with it
    Take();
    Hear(47);
    EXPECT_TRUE(Take().empty());
    Hear(1);
    EXPECT_EQ(Numbers(Take()), std::vector<unsigned>{4});

    Console().CheckBoxNetwork.SetValue(false);
    EXPECT_FALSE(SaysStreaming()) << "nothing goes out";
    for (int i = 0; i < 300; ++i) {
        Hear(512);
    }
    EXPECT_TRUE(Take().empty());
    Console().CheckBoxNetwork.SetValue(true);
    desktop.Advance(0.02);
    std::vector<unsigned> newest(60);
    std::iota(newest.begin(), newest.end(), 245U);
    EXPECT_EQ(Numbers(Take()), newest);
}

} // namespace
} // namespace larkspool
