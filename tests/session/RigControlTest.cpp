#include "remote/RigServer.h"
#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

// A program that speaks rig control.
class RigControl : public ConsoleFixture {
  protected:
    RigControl() {
        Start();
        Console().CheckBoxNetwork.SetValue(true);
        rig = Connect();
    }
    std::shared_ptr<VirtualLink> Connect() { return desktop.tcpServers.at(0)->Connect(); }
    std::string Ask(const std::string& lines) {
        rig->Send(lines + "\n");
        desktop.Advance(0.1); // a new share
        return rig->TakeReceived();
    }
    std::string Modulation() { // the last that went to the receiver
        std::string last = "none";
        for (const std::string& command : Audio().TakeCommands()) {
            last = command.starts_with("SET mod=") ? command.substr(8) : last;
        }
        return last;
    }

    std::shared_ptr<VirtualLink> rig;
};

TEST_F(RigControl, WhatIsSetGoesToTheReceiverAndIsReadBack) {
    ConnectAndStream();
    struct Case {
        std::string lines;
        std::string answer;
        std::string modulation; // what goes over the receiver's wire
    };
    const Case cases[] = {
        {"F 14074000.000000\nf", "RPRT 0\n14074000\n", "am low_cut=-5000 high_cut=5000 freq=14074"},
        {"\\set_freq 7055000.5\r\n\\get_freq\r", "RPRT 0\n7055000.5\n",
         "am low_cut=-5000 high_cut=5000 freq=7055.0005"},
        {"+F7000000", "set_freq: 7000000\nRPRT 0\n", "am low_cut=-5000 high_cut=5000 freq=7000"},
        {"M USB 0 m", "RPRT 0\nUSB\n2600\n", "usb low_cut=100 high_cut=2700 freq=7000"},
        {"M USB 2000 m", "RPRT 0\nUSB\n2000\n", "usb low_cut=100 high_cut=2100 freq=7000"},
        {"M LSB 2000 m", "RPRT 0\nLSB\n2000\n", "lsb low_cut=-2100 high_cut=-100 freq=7000"},
        {"M CW 201 m", "RPRT 0\nCW\n201\n", "cw low_cut=400 high_cut=601 freq=7000"},
        {"M PKTUSB -1 m", "RPRT 0\nUSB\n2000\n", "usb low_cut=100 high_cut=2100 freq=7000"},
        {"M AMS 6000 m", "RPRT 0\nAMS\n6000\n", "sam low_cut=-3000 high_cut=3000 freq=7000"},
        {"M FM m", "RPRT -1\n", "none"}, // "m" in the width's place
        {"M FM\n;m", "RPRT 0\nget_mode:;Mode: FM;Passband: 12000;RPRT 0\n",
         "nbfm low_cut=-6000 high_cut=6000 freq=7000"},
        {"M WFM 0\nM AM -2\nM AM 1e6\nF -1\nF 1e6\nF\nF 7 MHz", // the last gives 7 Hz, then "MHz"
         "RPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\nRPRT -1\nRPRT 0\nRPRT -1\n",
         "nbfm low_cut=-6000 high_cut=6000 freq=0.007"},
    };
    for (const auto& [lines, answer, modulation] : cases) {
        EXPECT_EQ(Ask(lines), answer) << lines;
        EXPECT_EQ(Modulation(), modulation) << lines;
    }
    Console().PopupMenuMode.SetListIndex(8); // "usn"
    EXPECT_EQ(Ask("m"), "USB\n2300\n") << "the nearest name";
}

TEST_F(RigControl, TheRestIsAnsweredAsProgramsExpect) {
    const std::pair<std::string, std::string> cases[] = {
        {"l STRENGTH", "-54\n"}, // before any session
        {"\\chk_vfo", "0\n"},
        {"v\ns\nV VFOA\nS 0 VFOA\nV VFOB\nS 1 VFOB",
         "VFOA\n0\nVFOA\nRPRT 0\nRPRT 0\nRPRT -11\nRPRT -11\n"},
        {"+s", "get_split_vfo:\nSplit: 0\nTX VFO: VFOA\nRPRT 0\n"},
        {"\\get_powerstat\n|\\get_powerstat", "1\nget_powerstat:|Power Status: 1|RPRT 0\n"},
        {"L AF 0.25\nl AF\n+L SQL 1\nl SQL\nL RF 1",
         "RPRT 0\n0.250000\nset_level: SQL 1\nRPRT 0\n1.000000\nRPRT -11\n"},
        {"t\nT 1\n+t\n\\send_morse CQ f\nu TONE\nU TONE 1\nl RFPOWER",
         "RPRT -11\nRPRT -11\nget_ptt:\nRPRT -11\nRPRT -11\nRPRT -11\nRPRT -11\nRPRT -11\n"},
        {"_", "Larkspool 1.3.0b4\n"},
        {"\\get_rig_info", "VFO=VFOA Freq=10000000 Mode=AM Width=10000 RX=1 TX=0\n"
                           "Split=0 SatMode=0\nRig=Larkspool\nApp=Larkspool\n"
                           "Version=1.3.0b4\n\n"},
        {"fmv t v", "10000000\nAM\n10000\nVFOA\nRPRT -11\nVFOA\n"},
        {"\n \t\r\n", ""},
        {"J 10 f\n\\set_lock_mode 1\n% f\n\\get_lock_mode", "RPRT -11\nRPRT -11\nRPRT -1\n0\n"},
    };
    for (const auto& [lines, answer] : cases) {
        EXPECT_EQ(Ask(lines), answer) << lines;
    }
    EXPECT_EQ(Console().OutputVolumeSlider.Value(), 250);
    EXPECT_EQ(Console().SliderSquelch.Value(), 40);
    EXPECT_EQ(Ask("q f"), "RPRT 0\n");
    EXPECT_FALSE(rig->IsOpen());
}

TEST_F(RigControl, ATrackerStartsAndEndsARecording) {
    EXPECT_EQ(Ask("U RECORD 1\nAOS"), "RPRT -9\nRPRT -9\n") << "there is nothing to record";
    ConnectAndStream();
    desktop.Advance(0.1);
    EXPECT_EQ(Ask("w AOS\nAOS\nu RECORD"), "RPRT 0\nRPRT 0\n1\n");
    Audio().Sound(0, {1, 2, 3}, 540);
    desktop.Advance(0);
    EXPECT_EQ(Ask("l STRENGTH"), "0\n") << "-73 dBm";
    EXPECT_EQ(Ask("LOS\nu RECORD\nLOS"), "RPRT 0\n0\nRPRT 0\n");
    ASSERT_EQ(Recordings().size(), 1U);
    EXPECT_EQ(SoundIn(Recordings().front()).size(), 6U);
    Console().CheckBoxReconnect.SetValue(true);
    desktop.Advance(1); // another name
    EXPECT_EQ(Ask("U RECORD 1\nU RECORD 0\nAOS"), "RPRT 0\nRPRT 0\nRPRT 0\n");
    EXPECT_EQ(Recordings().size(), 2U);
    Audio().socket.Fail();
    EXPECT_EQ(Ask("LOS"), "RPRT 0\n") << "while the link is down";
    desktop.Advance(60);
    Answer();
    EXPECT_EQ(Ask("u RECORD"), "0\n") << "an ended recording does not go on";
}

TEST_F(RigControl, TheBoxOpensThePortForEightPeersAndUntickingCutsThem) {
    EXPECT_EQ(desktop.tcpServers.at(0)->port, 4532);
    std::vector<std::shared_ptr<VirtualLink>> others;
    for (std::size_t i = 1; i < RigServer::MostPeers; ++i) {
        others.push_back(Connect());
    }
    EXPECT_FALSE(Connect()->IsOpen());
    desktop.sound.datagrams.clear();
    others.front()->Send("F 7074000\nF 6000000"); // half a line
    others.front()->HangUp();
    desktop.Advance(0.1);
    ASSERT_EQ(desktop.sound.datagrams.size(), 1U) << "heard by UDP as any tuning";
    EXPECT_EQ(desktop.sound.datagrams[0].second, std::string("freq:007074000\0", 15));
    EXPECT_TRUE(Connect()->IsOpen()) << "a freed place";
    EXPECT_EQ(Ask("f"), "7074000\n");
    Console().CheckBoxNetwork.SetValue(false);
    EXPECT_FALSE(rig->IsOpen());
    EXPECT_EQ(desktop.tcpServers.at(0)->port, 0);
    desktop.tcpServers.at(0)->lastError = 98;
    Console().CheckBoxNetwork.SetValue(true);
    EXPECT_EQ(Log(), (Strings{"last error 0", "rig control: port 4532, error 98"}));
}

TEST_F(RigControl, WhatNoProgramSendsEndsTheLink) {
    for (const std::string& bytes :
         {"f" + std::string(256, ' '), std::string(10'000, '\xff'),
          std::string("POST / HTTP/1.1\r\nHost: 127.0.0.1:4532\r\n\r\nF 5000000")}) {
        rig = Connect();
        Ask(bytes + "\nF 6000000");
        EXPECT_FALSE(rig->IsOpen()) << bytes.substr(0, 40);
        EXPECT_EQ(Console().TextFieldFreq.Text(), "10000");
    }
    rig = Connect();
    EXPECT_EQ(Ask("f" + std::string(255, ' ')), "10000000\n") << "just short enough";
}

TEST_F(RigControl, AFloodIsWorkedOffInSharesAndTheSoundGoesOn) {
    ConnectAndStream();
    const auto deaf = Connect();
    deaf->readsNothing = true;
    const std::size_t rows = Log().size();
    desktop.sound.played.clear();
    std::string flood;
    for (int i = 0; i < 1'000'000; ++i) {
        flood += i % 2 == 0 ? "F 7000000\n" : "F 8000000\n";
    }
    rig->Send(flood);
    for (int second = 0; second < 60; ++second) {
        deaf->Send("\\dump_state\n\\dump_state\n\\dump_state\n");
        Audio().Sound(static_cast<std::uint32_t>(second), {1, 2, 3, 4});
        desktop.Advance(1);
        EXPECT_LE(Audio().socket.TakeSent().size(), 40'000U) << "the link to the receiver";
    }
    EXPECT_EQ(desktop.sound.played.size(), 60U * 4U);
    EXPECT_FALSE(deaf->IsOpen()) << "it takes none of its answers";
    EXPECT_GT(rig->TakeReceived().size(), 60U * 100U * 7U) << "it gets on";
    EXPECT_EQ(Log().size(), rows);
}

} // namespace
} // namespace larkspool
