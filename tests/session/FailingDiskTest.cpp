#include "platform/ReplaceFile.h"
#include "session/RecordingFixture.h"
#include "support/SmallDisk.h"

#include <cstdio>
#include <filesystem>

namespace {

bool closingFails = false;

} // namespace

// The linker sends the program's fclose here: no disk can be made to fail at the close alone.
extern "C" int __real_fclose(std::FILE* file);
extern "C" int __wrap_fclose(std::FILE* file);
extern "C" int __wrap_fclose(std::FILE* file) {
    return __real_fclose(file) != 0 || closingFails ? EOF : 0;
}

namespace larkspool {
namespace {

// A disk that fills up costs the rest of the recording and nothing else.
class FailingDisk : public RecordingFixture {
  protected:
    FailingDisk() {
        Start();
        ConnectAndStream();
    }

    void ExpectAnOrderlyEnd(std::size_t boxes) {
        EXPECT_EQ(Caption(), "Start Recording");
        EXPECT_EQ(Console().LabelRecordingStatus.Text(), "");
        EXPECT_TRUE(Audio().socket.IsConnected());
        const std::size_t heard = desktop.sound.played.size();
        SendFrames(2);
        desktop.Advance(0.1);
        EXPECT_EQ(desktop.sound.played.size(), heard + 2 * FrameSamples) << "the sound has stopped";
        EXPECT_TRUE(Console().PushButtonRecord.Enabled());
        EXPECT_EQ(desktop.boxes.size(), boxes) << "one message is enough";
    }
};

TEST_F(FailingDisk, KeepsWhatItTookWhereverItFails) {
    std::size_t boxes = 0;
    for (rlim_t room = 0; room < 44 + 4 * FrameSamples + 3; ++room) {
        SCOPED_TRACE(room);
        std::string sent;
        {
            const SmallDisk disk(room);
            PressRecord();
            sent = SendFrames(3);
        }
        ExpectAnOrderlyEnd(++boxes);
        if (room < 44) {
            EXPECT_TRUE(Recordings().empty()) << "nothing can play less than a header";
        } else {
            EXPECT_EQ(OnlySound(), sent.substr(0, (room - 44) / 2 * 2));
            EXPECT_NE(desktop.boxes.back().find(Recordings().front().Name()), std::string::npos);
        }
        ForgetRecordings();
        desktop.Advance(1);
    }
    PressRecord();
    const std::string sent = SendFrames(2);
    Console().PushButtonRecord.Push();
    EXPECT_EQ(OnlySound(), sent) << "and with room again, the next press records";
}

TEST_F(FailingDisk, MayFailAtTheCloseAndInTheSilenceToo) {
    PressRecord();
    std::string sent = SendFrames(3);
    closingFails = true;
    Console().PushButtonRecord.Push();
    closingFails = false;
    ExpectAnOrderlyEnd(1);
    EXPECT_EQ(OnlySound(), sent);

    ForgetRecordings();
    desktop.Advance(1); // another name
    Console().SliderSquelch.SetValue(7);
    Console().TextFieldSquelchedDeadSpace.SetText("60");
    {
        const SmallDisk disk(200'000);
        PressRecord();
        sent = SendFrames(1);
        Audio().Sound(sequence++, std::vector<std::int16_t>(FrameSamples, 1));
        desktop.Advance(0);
    }
    ExpectAnOrderlyEnd(2);
    EXPECT_EQ(OnlySound(), sent + std::string(200'000 - 44 - sent.size(), '\0'));
}

TEST_F(FailingDisk, IsNotTriedAgainByRollOverOrReconnect) {
    Console().CheckBoxReconnect.SetValue(true);
    Console().rollOverSamples = 10;
    PressRecord();
    SendFrames(1);
    {
        const SmallDisk disk(0); // not even the sizes can be written
        desktop.Advance(0.1);
    }
    ExpectAnOrderlyEnd(1);
    EXPECT_EQ(Recordings().size(), 1U);
    desktop.Advance(1);
    PressRecord();
    {
        const SmallDisk disk(0);
        Audio().socket.Fail();
        desktop.Advance(0);
    }
    EXPECT_EQ(desktop.boxes.size(), 2U);
    desktop.Advance(60);
    Answer();
    EXPECT_EQ(Caption(), "Start Recording");
}

TEST_F(FailingDisk, IsToldAtTheUsersOwnQuitAndNeverHoldsUpASignal) {
    for (const QuitCause cause : {QuitCause::Signal, QuitCause::User}) {
        PressRecord();
        SendFrames(1);
        desktop.answers = {MessageDialog::Answer::Action};
        {
            const SmallDisk disk(0);
            Quit(cause);
        }
        EXPECT_TRUE(desktop.boxes.empty());
        EXPECT_EQ(desktop.dialogs.size(), cause == QuitCause::User ? 1U : 0U);
        Start();
        ConnectAndStream();
    }
    EXPECT_NE(desktop.dialogs.at(0).message.find("KiwiRecording-"), std::string::npos);
}

TEST(UnsettledDisk, NeverCostsWhatWasSavedBeforeAndASavedFileKeepsItsPermissions) {
    class Unsettled : public VirtualDesktop {
        bool Settle(const FolderItem&) override { return settles; }

      public:
        bool settles = false;
    };
    Unsettled desktop;
    const FolderItem folder = desktop.Folder(SpecialFolder::Preferences);
    const FolderItem file = *folder.Child("saved");
    constexpr auto Mine = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    Put(file, "before");
    std::filesystem::permissions(file.Path(), Mine); // hidden from others
    EXPECT_FALSE(ReplaceFile(desktop, file, "lost"));
    EXPECT_EQ(ContentOf(file), "before");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
    desktop.settles = true;
    EXPECT_TRUE(ReplaceFile(desktop, file, "after"));
    EXPECT_EQ(ContentOf(file), "after");
    EXPECT_EQ(std::filesystem::status(file.Path()).permissions(), Mine);
}

} // namespace
} // namespace larkspool
