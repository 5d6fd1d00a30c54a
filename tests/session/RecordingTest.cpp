#include "session/RecordingFixture.h"

#include <functional>

namespace larkspool {
namespace {

// From the record button to the file on disk.
class Recording : public RecordingFixture {
  protected:
    Recording() {
        Start();
        ConnectAndStream();
    }

    // Plays a night on a channel, one letter a frame: L loud, Q the receiver's filler, A the filler
    // but for its last sample, Z zeros, E a frame without samples. Gives the bytes of each.
    Strings Play(std::string_view night) {
        Strings sent;
        for (const char frame : night) {
            std::string bytes = NextFrame();
            if (frame != 'L') {
                bytes.clear();
                for (std::size_t i = 0; frame != 'E' && i < FrameSamples; ++i) {
                    bytes += frame == 'Z' ? '\0' : '\1';
                    bytes += '\0';
                }
            }
            if (frame == 'A') {
                bytes[bytes.size() - 2] = '\2';
            }
            Send(bytes);
            sent.push_back(bytes);
        }
        return sent;
    }
};

TEST_F(Recording, HoldsExactlyTheReceiversSamplesAndIsNamedForItsStart) {
    SendFrames(3); // before the press: not recorded
    Console().TextFieldFreq.SetText("7055.5");
    PressRecord();
    EXPECT_EQ(Caption(), "Stop Recording");
    Console().TextFieldFreq.SetText("14200"); // a later tuning renames nothing
    std::string sent = SendFrames(500);
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "00:00:02");
    sent += NextFrame() + "\x7f"; // an odd last byte is kept, but is no sample
    Send(NextFrame() + "\x7f");
    Console().PushButtonRecord.Push();
    EXPECT_EQ(Caption(), "Start Recording");
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "");
    SendFrames(3);
    EXPECT_EQ(OnlySound() + "\x7f", sent);
    EXPECT_EQ(ContentOf(Recordings().front()).substr(44), sent);
    EXPECT_EQ(Recordings().front().Name(),
              "KiwiRecording-2027-01-15T08_00_01Z7055.500am_sdr.example.net_8073.WAV");
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Recording, AQuietStretchLeavesOnePieceOfSilence) {
    struct Night {
        std::string_view frames;
        std::string_view kept; // indexes of the frames, _ for a piece of silence
        int squelch = 7;
    };
    const Night nights[] = {
        {"LLL", "012"},     {"QL", "_1"},       {"LQQQQL", "0_5"},      {"Q", "_"},
        {"QQL", "2"}, // it has had its piece of silence at the end of the night before
        {"QQQ", "_"},       {"LQLQL", "0_2_4"}, {"LZL", "012"},         {"LEL", "0_2"},
        {"ELEEQL", "_1_5"}, {"LQALQ", "0_23_"}, {"LQQALE", "012345", 0}};
    Console().TextFieldSquelchedDeadSpace.SetText("0.01");
    for (const auto& [frames, kept, squelch] : nights) {
        SCOPED_TRACE(frames);
        ForgetRecordings();
        Console().SliderSquelch.SetValue(squelch);
        PressRecord();
        const auto sent = Play(frames);
        Console().PushButtonRecord.Push();
        std::string expected;
        for (const char piece : kept) {
            expected += piece == '_' ? std::string(240, '\0')
                                     : sent.at(static_cast<std::size_t>(piece - '0'));
        }
        EXPECT_EQ(OnlySound(), expected);
    }
}

TEST_F(Recording, NoSlipInTheDeadSpaceFillsTheDisk) {
    struct Case {
        const char* seconds;
        std::uint32_t rate;
        std::size_t samples;
    };
    Console().SliderSquelch.SetValue(7);
    for (const auto& [seconds, rate, samples] :
         {Case{"1.5", 12000, 18000},
          {"0.00025", 12000, 3},
          {"-3", 12000, 0},
          {"7200", 1, 3600}, // at a rate at which an hour is a small file
          {"1", 0, 0}}) {    // at an unknown one
        SCOPED_TRACE(seconds);
        ForgetRecordings();
        Audio().Message(" audio_rate=" + std::to_string(rate));
        Console().TextFieldSquelchedDeadSpace.SetText(seconds);
        PressRecord();
        Play("LQ");
        Console().PushButtonRecord.Push();
        EXPECT_EQ(OnlySound(rate).size(), 2 * (FrameSamples + samples));
    }
}

TEST_F(Recording, AFileThatCantBeMadeIsNamedAndTheNextPressTriesAgain) {
    Console().TextFieldAddress.SetText("sdr.example.net/../up");
    PressRecord();
    EXPECT_EQ(Caption(), "Start Recording");
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_NE(desktop.boxes[0].find("_sdr.example.net/../up_8073.WAV"), std::string::npos);
    SendFrames(3);
    EXPECT_TRUE(Recordings().empty());
    Console().TextFieldAddress.SetText("sdr.example.net");
    PressRecord();
    SendFrames(5);
    Console().PushButtonRecord.Push();
    Console().PushButtonRecord.Push(); // in the same second: it replaces the first
    const std::string sent = SendFrames(2);
    Console().PushButtonRecord.Push();
    EXPECT_EQ(OnlySound(), sent);
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_F(Recording, IsCompleteHoweverTheSessionEndsAndNothingLooksAliveThen) {
    const std::function<void()> ends[] = {
        [this] { Console().PushButtonDisconnect.Push(); },
        [this] { Console().EndEntry(); },
        [this] { Console().PushButtonConnect.Push(); },
        [this] { Audio().Message(" too_busy=1"); },
        [this] {
            Audio().socket.Fail(); // with Reconnect unticked
            desktop.Advance(600);
            EXPECT_EQ(Console().ProgressBarSmeter.Value(), 15);
            Console().PushButtonDisconnect.Push();
        },
        [this] { Console().Close(); },
        [this] { Quit(QuitCause::User); },
        [this] { Quit(QuitCause::Signal); },
        [this] { Quit(QuitCause::Logout); },
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(&end - ends);
        ForgetRecordings();
        Start();
        ConnectAndStream();
        PressRecord();
        const std::string sent = SendFrames(7) + std::string("\2\0\3\0", 4);
        Audio().Sound(sequence++, {2, 3}, 1000, 9);
        desktop.Advance(0.1);
        EXPECT_NE(Console().ProgressBarSmeter.Value(), 15);
        end();
        desktop.Advance(0);
        EXPECT_EQ(OnlySound(), sent);
        if (app != nullptr) {
            EXPECT_EQ(Caption(), "Start Recording");
            EXPECT_FALSE(Console().PushButtonRecord.Enabled());
            desktop.Advance(0.5);
            EXPECT_FALSE(Console().PushButtonRecord.Enabled());
            EXPECT_EQ(Console().LabelSmeter.Text(), "-127 dBm 0 0");
            EXPECT_EQ(Console().ProgressBarSmeter.Value(), 15);
        }
        EXPECT_TRUE(desktop.boxes.empty());
    }
}

TEST_F(Recording, GoesOnInANewFileOnceTheReceiverIsBack) {
    const std::function<void()> losses[] = {[this] { Audio().socket.Fail(); },
                                            [this] { Audio().Message(" too_busy=4"); }};
    Console().CheckBoxReconnect.SetValue(true);
    for (const auto& loss : losses) {
        SCOPED_TRACE(&loss - losses);
        ForgetRecordings();
        ConnectAndStream();
        PressRecord();
        const std::string before = SendFrames(4);
        loss();
        desktop.Advance(1);
        EXPECT_EQ(OnlySound(), before) << "complete before the link is back";
        EXPECT_EQ(Caption(), "Start Recording");
        desktop.Advance(59);
        Audio().socket.Fail(); // the receiver isn't back yet
        desktop.Advance(60.1);
        Answer("20250");
        EXPECT_EQ(Caption(), "Stop Recording");
        const std::string after = SendFrames(3);
        Console().PushButtonRecord.Push();
        ASSERT_EQ(Recordings().size(), 2U);
        EXPECT_EQ(SoundIn(Recordings()[0]), before);
        EXPECT_EQ(SoundIn(Recordings()[1], 20250), after);
        loss(); // of a session that its user records no longer
        desktop.Advance(60.1);
        Answer();
        EXPECT_EQ(Caption(), "Start Recording");
        PressRecord();
        loss();
        desktop.Advance(1);
        Console().PushButtonDisconnect.Push();
        ConnectAndStream();
        desktop.Advance(1);
        EXPECT_EQ(Caption(), "Start Recording") << "its user has disconnected";
        EXPECT_EQ(Recordings().size(), 3U);
    }
}

TEST_F(Recording, OfAnEntryDoesNotOutliveAConsoleThatIsClosedBeforeTheLinkStands) {
    Perform("FileNewScheduleWindow", &Console()); // the program goes on
    Console().ConnectAndRecord("sdr.example.net:8073", "9410", "am", "5000");
    Console().Close();
    desktop.Advance(60);
    Console().Show();
    ConnectAndStream();
    desktop.Advance(1);
    EXPECT_EQ(Caption(), "Start Recording");
    EXPECT_TRUE(Recordings().empty());
}

// Two thousand million bytes are more than a signed 32-bit size can tell. The file is small here.
TEST_F(Recording, RollsOverAtAThousandMillionSamplesWithoutLosingOne) {
    PressRecord();
    std::string sent;
    for (std::size_t files = 1; files <= 3; ++files) {
        Console().audioRecording->recordedSamples = 999'999'951;
        sent += SendFrames(1);
        desktop.Advance(1);
        EXPECT_EQ(Recordings().size(), files);
        sent += SendFrames(2); // the file is full, and goes on until the next tick
        desktop.Advance(1);
    }
    Console().PushButtonRecord.Push();
    std::string heard;
    for (const FolderItem& file : Recordings()) {
        const std::string content = ContentOf(file);
        heard += content.substr(44);
        EXPECT_EQ(LittleEndianAt(content, 40), content.size() == 44 ? 0U : 2'000'000'190U);
    }
    EXPECT_EQ(heard, sent);
}

} // namespace
} // namespace larkspool
