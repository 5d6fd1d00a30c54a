#include "platform/ReplaceFile.h"
#include "session/RecordingFixture.h"

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspool {
namespace {

// A second copy of the program in a process of its own, on the same folders, that waits to be
// killed once it has done its work.
class OtherProgram {
  public:
    explicit OtherProgram(const std::function<void()>& work) {
        int ends[2] = {};
        EXPECT_EQ(pipe(ends), 0);
        process = fork();
        if (process == 0) {
            work();
            [[maybe_unused]] const auto told = write(ends[1], "x", 1);
            for (;;) {
                pause();
            }
        }
        char byte = 0;
        EXPECT_EQ(read(ends[0], &byte, 1), 1);
        close(ends[0]);
        close(ends[1]);
    }
    ~OtherProgram() { Kill(); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void Kill() {
        if (process > 0) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
            process = 0;
        }
    }

  private:
    pid_t process = 0;
};

// The same folders, seen from a process of its own.
class OtherDesktop : public VirtualDesktop {
  public:
    std::string RandomBytes(std::size_t count) override {
        const std::string own = "0000000" + std::to_string(getpid());
        return own.substr(own.size() - count);
    }
};

// Saves a text of its own letter over and over, as fast as it can, until it is killed.
pid_t StartSaving(const FolderItem& file, char letter) {
    const pid_t process = fork();
    if (process == 0) {
        OtherDesktop desktop;
        const std::string text(100'000, letter);
        while (ReplaceFile(desktop, file, text)) {
        }
        _exit(1);
    }
    return process;
}

class Killed : public RecordingFixture {
  protected:
    void RecordSomeFrames(int count) {
        Start();
        ConnectAndStream();
        PressRecord();
        SendFrames(count);
    }
    std::string FramesToCome(int count) {
        std::string frames;
        for (int i = 0; i < count; ++i) {
            frames += NextFrame();
            ++sequence;
        }
        sequence = 0;
        return frames;
    }
};

TEST_F(Killed, ARecordingIsFinishedAtTheNextStart) {
    const std::string recorded = FramesToCome(20);
    OtherProgram program([this] { RecordSomeFrames(20); });
    program.Kill();
    ASSERT_EQ(Recordings().size(), 1U);
    EXPECT_EQ(LittleEndianAt(ContentOf(Recordings().front()), 40), 0U);
    Start();
    desktop.Advance(4); // the window stands and works before the disk is asked
    EXPECT_EQ(LittleEndianAt(ContentOf(Recordings().front()), 40), 0U);
    desktop.Advance(4);
    EXPECT_EQ(OnlySound(), recorded);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Killed, ARunningRecordingIsNeitherFinishedNorDeletedByAnother) {
    const std::string recorded = FramesToCome(20);
    OtherProgram program([this] { RecordSomeFrames(20); });
    ASSERT_EQ(Recordings().size(), 1U);
    const std::string before = ContentOf(Recordings().front());

    Start();
    ConnectAndStream();
    PressRecord(); // the same receiver in the same second: the same name
    EXPECT_FALSE(Console().audioRecording->isRecording);
    desktop.Advance(60);
    EXPECT_EQ(ContentOf(Recordings().front()), before);

    program.Kill();
    Restart();
    desktop.Advance(60);
    EXPECT_EQ(OnlySound(), recorded);
}

TEST_F(Killed, WhatIsSavedIsWholeHoweverManySaveItAndWheneverTheyDie) {
    const FolderItem file = *desktop.Folder(SpecialFolder::Preferences).Child("saved");
    ASSERT_TRUE(ReplaceFile(desktop, file, std::string(100'000, '0')));
    for (int round = 0; round < 4; ++round) {
        const pid_t saving[] = {StartSaving(file, 'a'), StartSaving(file, 'b')};
        for (int look = 0; look < 20; ++look) {
            usleep(static_cast<useconds_t>(500 + 137 * look + 61 * round));
            const std::string text = ContentOf(file);
            ASSERT_EQ(text, std::string(100'000, text.empty() ? '?' : text[0]));
        }
        for (const pid_t process : saving) {
            EXPECT_EQ(waitpid(process, nullptr, WNOHANG), 0) << "one has cost the other its save";
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
        const std::string text = ContentOf(file);
        ASSERT_EQ(text, std::string(100'000, text.empty() ? '?' : text[0]));
    }
}

TEST_F(Killed, OurOwnRunningRecordingIsNotTakenForADeadOne) {
    RecordSomeFrames(20);
    desktop.Advance(60);
    EXPECT_EQ(LittleEndianAt(ContentOf(Recordings().front()), 40), 0U);
    const std::string more = SendFrames(2);
    Console().PushButtonRecord.Push();
    EXPECT_TRUE(OnlySound().ends_with(more));
}

} // namespace
} // namespace larkspool
