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
    std::vector<std::string> Play(std::string_view night) {
        std::vector<std::string> sent;
        for (const char frame : night) {
            if (frame == 'L') {
                sent.push_back(SendFrame());
                continue;
            }
            std::vector<std::int16_t> samples(frame == 'E' ? 0 : FrameSamples,
                                              frame == 'Z' ? 0 : 1);
            if (frame == 'A') {
                samples.back() = 2;
            }
            Audio().Sound(sequence++, samples);
            desktop.Advance(0);
            sent.push_back(LittleEndian(samples));
        }
        return sent;
    }

    static std::string LittleEndian(const std::vector<std::int16_t>& samples) {
        std::string bytes;
        for (const std::int16_t sample : samples) {
            bytes += static_cast<char>(static_cast<std::uint16_t>(sample) & 0xFFU);
            bytes += static_cast<char>(static_cast<std::uint16_t>(sample) >> 8U);
        }
        return bytes;
    }

    std::string DeadTimeLines() {
        const std::string text = Console().TextArea1.Text();
        const std::size_t first = text.find("AudioRecordingWrite");
        return first == std::string::npos ? "" : text.substr(first);
    }
};

TEST_F(Recording, HoldsExactlyTheReceiversSamples) {
    SendFrames(3); // before the press: not recorded
    Console().SliderSquelch.SetValue(0);
    PressRecord();
    EXPECT_EQ(Caption(), "Stop Recording");
    const std::string sent = SendFrames(500);
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "00:00:02");
    Console().PushButtonRecord.Push();
    EXPECT_EQ(Caption(), "Start Recording");
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "");
    SendFrames(3);
    EXPECT_EQ(OnlySound(), sent);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Recording, IsNamedForItsStart) {
    Console().TextFieldFreq.SetText("7055.5");
    PressRecord();
    Console().TextFieldFreq.SetText("14200"); // a later tuning renames nothing
    desktop.Advance(120);
    Console().PushButtonRecord.Push();
    ASSERT_EQ(Recordings().size(), 1U);
    EXPECT_EQ(Recordings().front().Name(),
              "KiwiRecording-2027-01-15T08_00_01Z7055.500am_sdr.example.net_8073.WAV");
    EXPECT_EQ(OnlySound(), "") << "a file of no samples is a valid file";
}

TEST_F(Recording, AQuietStretchLeavesOnePieceOfSilence) {
    struct Night {
        std::string_view frames;
        std::string_view kept; // indexes of the frames, _ for a piece of silence
    };
    const Night nights[] = {{"LLL", "012"}, {"LQL", "0_2"},     {"LQQQQL", "0_5"},
                            {"QL", "_1"},   {"LQ", "0_"},       {"Q", "_"},
                            {"QQQ", "_"},   {"LQLQL", "0_2_4"}, {"LQALQ", "0_23_"},
                            {"LZL", "012"}, {"LEL", "0_2"},     {"ELEEQL", "_1_5"}};
    for (const auto& [frames, kept] : nights) {
        Quit();
        std::filesystem::remove_all(desktop.Folder(SpecialFolder::Documents).Path());
        Start();
        Console().TextFieldSquelchedDeadSpace.SetText("0.01");
        ConnectAndStream();
        Console().SliderSquelch.SetValue(7);
        PressRecord();
        const auto sent = Play(frames);
        Console().PushButtonRecord.Push();
        std::string expected;
        for (const char piece : kept) {
            expected += piece == '_' ? std::string(240, '\0')
                                     : sent.at(static_cast<std::size_t>(piece - '0'));
        }
        EXPECT_EQ(OnlySound(), expected) << frames;
    }
}

TEST_F(Recording, WithTheSquelchOffNothingIsLeftOut) {
    Console().TextFieldSquelchedDeadSpace.SetText("2");
    PressRecord();
    std::string expected;
    for (const std::string& frame : Play("LQQALE")) {
        expected += frame;
    }
    Console().PushButtonRecord.Push();
    EXPECT_EQ(OnlySound(), expected);
    EXPECT_EQ(DeadTimeLines(), "");
}

TEST_F(Recording, AQuietStretchGoesOnFromOneRecordingToTheNext) {
    Console().TextFieldSquelchedDeadSpace.SetText("0.01");
    Console().SliderSquelch.SetValue(7);
    PressRecord();
    Play("LQ");
    Console().PushButtonRecord.Push();
    desktop.Advance(1);
    PressRecord();
    const std::string loud = Play("QQL").back();
    Console().PushButtonRecord.Push();
    ASSERT_EQ(Recordings().size(), 2U);
    EXPECT_EQ(SoundIn(Recordings().back()), loud) << "it has had its piece of silence already";
}

TEST_F(Recording, TheDeadSpaceCountsFromTheNextStretchAndIsNoted) {
    Console().SliderSquelch.SetValue(7);
    Console().TextFieldSquelchedDeadSpace.SetText("1.5");
    PressRecord();
    Play("QQL");
    Console().TextFieldSquelchedDeadSpace.SetText("0");
    Play("Q");
    Console().TextFieldSquelchedDeadSpace.SetText("0.00025");
    Play("QLQ");
    Console().TextFieldSquelchedDeadSpace.SetText("-3");
    Play("LQ");
    Console().PushButtonRecord.Push();
    EXPECT_EQ(DeadTimeLines(), "AudioRecordingWriteSquelchDeadTime 1.5 18000 36000\n"
                               "AudioRecordingWriteSquelchDeadTime 0 0 0\n"
                               "AudioRecordingWriteSquelchDeadTime 0.00025 3 6\n"
                               "AudioRecordingWriteSquelchDeadTime -3 0 0\n");
    EXPECT_EQ(OnlySound().size(), 36000 + 6 + 3 * 2 * FrameSamples);
}

TEST_F(Recording, NoSlipInTheDeadSpaceFillsTheDisk) {
    Audio().Message(" audio_rate=1"); // so that an hour is a small file
    Console().SliderSquelch.SetValue(7);
    Console().TextFieldSquelchedDeadSpace.SetText("7200");
    PressRecord();
    Play("Q");
    Console().PushButtonRecord.Push();
    EXPECT_EQ(SoundIn(Recordings().front(), 1).size(), 2 * 3600U);
}

TEST_F(Recording, AnOddLastByteIsKeptButIsNoSample) {
    PressRecord();
    std::string sent = SendFrame();
    sent += SendFrame("\x7f");
    Console().PushButtonRecord.Push();
    EXPECT_EQ(OnlySound() + "\x7f", sent);
    EXPECT_EQ(ContentOf(Recordings().front()).substr(44), sent);
}

TEST_F(Recording, AFailedStartSaysNothingAndTheNextPressTriesAgain) {
    Console().TextFieldAddress.SetText("sdr.example.net/../up");
    PressRecord();
    EXPECT_EQ(Caption(), "Stop Recording");
    SendFrames(3);
    desktop.Advance(0.2);
    EXPECT_TRUE(Recordings().empty());
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "");
    PressRecord();
    EXPECT_EQ(Caption(), "Stop Recording");
    Console().TextFieldAddress.SetText("sdr.example.net");
    PressRecord();
    const std::string sent = SendFrames(2);
    Console().PushButtonRecord.Push();
    EXPECT_EQ(Caption(), "Start Recording");
    EXPECT_EQ(OnlySound(), sent);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Recording, ASecondStartInTheSameSecondReplacesTheFirst) {
    PressRecord();
    SendFrames(5);
    Console().PushButtonRecord.Push();
    Console().PushButtonRecord.Push();
    const std::string sent = SendFrames(2);
    Console().PushButtonRecord.Push();
    EXPECT_EQ(OnlySound(), sent);
}

TEST_F(Recording, IsCompleteHoweverTheSessionEnds) {
    const std::function<void()> ends[] = {
        [this] { Console().PushButtonDisconnect.Push(); },
        [this] { Console().DoDisconnect(); },
        [this] { Console().PushButtonConnect.Push(); },
        [this] { Audio().Message(" too_busy=1"); },
        [this] {
            Audio().socket.Fail(); // with Reconnect unticked
            desktop.Advance(600);
            Console().PushButtonDisconnect.Push();
        },
        [this] { Console().Close(); },
        [this] { Quit(QuitCause::User); },
        [this] { Quit(QuitCause::Signal); },
        [this] { Quit(QuitCause::Logout); },
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(&end - ends);
        desktop.hasEnded = false;
        app.reset();
        desktop.queue.Clear();
        std::filesystem::remove_all(desktop.Folder(SpecialFolder::Documents).Path());
        Start();
        ConnectAndStream();
        PressRecord();
        const std::string sent = SendFrames(7);
        end();
        desktop.Advance(0);
        EXPECT_EQ(OnlySound(), sent);
        if (app != nullptr) {
            EXPECT_EQ(Caption(), "Start Recording");
            EXPECT_FALSE(Console().PushButtonRecord.Enabled());
            desktop.Advance(0.5);
            EXPECT_FALSE(Console().PushButtonRecord.Enabled());
        }
        EXPECT_TRUE(desktop.boxes.empty());
    }
}

TEST_F(Recording, GoesOnInANewFileOnceTheLostLinkIsBack) {
    Console().CheckBoxReconnect.SetValue(true);
    PressRecord();
    const std::string before = SendFrames(4);
    Audio().socket.Fail();
    desktop.Advance(1);
    EXPECT_EQ(OnlySound(), before) << "complete before the link is back";
    EXPECT_EQ(Caption(), "Start Recording");
    desktop.Advance(59);
    Audio().socket.Fail(); // the receiver isn't back yet
    desktop.Advance(60.1);
    AcceptLinks();
    Upgrade();
    Stream("20250");
    EXPECT_EQ(Caption(), "Stop Recording");
    const std::string after = SendFrames(3);
    Console().PushButtonDisconnect.Push();
    ASSERT_EQ(Recordings().size(), 2U);
    EXPECT_EQ(SoundIn(Recordings()[0]), before);
    EXPECT_EQ(SoundIn(Recordings()[1], 20250), after);
    ConnectAndStream();
    desktop.Advance(1);
    EXPECT_EQ(Caption(), "Start Recording") << "a recording that the user has ended comes back";
}

TEST_F(Recording, GoesOnOnceAFullReceiverTakesTheUserBack) {
    Console().CheckBoxReconnect.SetValue(true);
    PressRecord();
    const std::string before = SendFrames(4);
    Audio().Message(" too_busy=4");
    desktop.Advance(60.1);
    AcceptLinks();
    Upgrade();
    Stream();
    const std::string after = SendFrames(3);
    Console().PushButtonDisconnect.Push();
    ASSERT_EQ(Recordings().size(), 2U);
    EXPECT_EQ(SoundIn(Recordings()[0]), before);
    EXPECT_EQ(SoundIn(Recordings()[1]), after);
}

TEST_F(Recording, DoesNotGoOnOnceTheUserHasDisconnected) {
    Console().CheckBoxReconnect.SetValue(true);
    PressRecord();
    Audio().socket.Fail();
    desktop.Advance(1);
    Console().PushButtonDisconnect.Push();
    ConnectAndStream();
    desktop.Advance(1);
    EXPECT_EQ(Recordings().size(), 1U);
    EXPECT_EQ(Caption(), "Start Recording");
}

TEST_F(Recording, RollsOverWithoutLosingASample) {
    Console().rollOverSamples = 1000;
    PressRecord();
    std::string sent;
    for (int i = 0; i < 60; ++i) {
        sent += SendFrame();
        desktop.Advance(0.1);
    }
    EXPECT_EQ(Caption(), "Stop Recording");
    Console().PushButtonRecord.Push();
    ASSERT_EQ(Recordings().size(), 3U); // 2,880 samples
    std::string heard;
    for (const FolderItem& file : Recordings()) {
        heard += SoundIn(file);
    }
    EXPECT_EQ(heard, sent);
}

// Two thousand million bytes are more than a signed 32-bit size can tell. The file is small here,
// its header is not.
TEST_F(Recording, RollsOverAtAThousandMillionSamples) {
    PressRecord();
    Console().audioRecording->recordedSamples = 999'999'951;
    SendFrame();
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "23:08:53");
    EXPECT_EQ(Recordings().size(), 1U);
    desktop.Advance(1);
    SendFrame();
    desktop.Advance(0.1);
    ASSERT_EQ(Recordings().size(), 2U);
    const std::string whole = ContentOf(Recordings().front());
    EXPECT_EQ(LittleEndianAt(whole, 4), 2'000'000'130U);
    EXPECT_EQ(LittleEndianAt(whole, 40), 2'000'000'094U);
    EXPECT_EQ(Caption(), "Stop Recording");
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "");
}

TEST_F(Recording, OfAnUnknownRateShowsNoTime) {
    Audio().Message(" audio_rate=0");
    desktop.Advance(0);
    PressRecord();
    const std::string sent = SendFrames(2);
    desktop.Advance(0.1);
    EXPECT_EQ(Console().LabelRecordingStatus.Text(), "");
    Console().PushButtonRecord.Push();
    EXPECT_EQ(SoundIn(Recordings().front(), 0), sent);
}

} // namespace
} // namespace larkspool
