#include "platform/ReplaceFile.h"
#include "session/RecordingFixture.h"

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace larkspool {
namespace {

// A second copy of the program in a process of its own, on the same folders. Once it has done its
// work it goes on with something until it is killed.
class OtherProgram {
  public:
    using Act = std::function<void()>;

    explicit OtherProgram(
        const Act& work, const Act& goOn = [] { pause(); }) {
        int ends[2] = {};
        EXPECT_EQ(pipe(ends), 0);
        process = fork();
        if (process == 0) {
            work();
            [[maybe_unused]] const auto told = write(ends[1], "x", 1);
            for (;;) {
                goOn();
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

    // False if it had ended by itself.
    bool Kill() {
        int status = 0;
        return process > 0 && kill(process, SIGKILL) == 0 &&
               waitpid(std::exchange(process, 0), &status, 0) > 0 && WIFSIGNALED(status);
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

class Killed : public RecordingFixture {
  protected:
    std::string RecordSomeFrames() {
        Start();
        ConnectAndStream();
        PressRecord();
        return SendFrames(20);
    }
    // What the other program records: its receiver says the same as ours would.
    std::string SomeFrames() {
        std::string frames;
        for (; sequence < 20; ++sequence) {
            frames += NextFrame();
        }
        sequence = 0;
        return frames;
    }
    std::uint32_t ToldBytes() { return LittleEndianAt(ContentOf(Recordings().at(0)), 40); }
};

TEST_F(Killed, ARecordingIsFinishedAtTheNextStartAndNeverWhileItRuns) {
    const std::string recorded = SomeFrames();
    OtherProgram program([this] { RecordSomeFrames(); });
    Start();
    ConnectAndStream();
    PressRecord(); // the same receiver in the same second: the same name
    EXPECT_FALSE(Console().audioRecording->isRecording);
    desktop.Advance(60);
    EXPECT_EQ(ToldBytes(), 0U);

    program.Kill();
    Restart();
    desktop.Advance(4); // the window stands and works before the disk is asked
    EXPECT_EQ(ToldBytes(), 0U);
    desktop.Advance(4);
    EXPECT_EQ(OnlySound(), recorded);

    ForgetRecordings();
    const std::string own = RecordSomeFrames();
    desktop.Advance(60);
    EXPECT_EQ(ToldBytes(), 0U) << "a recording of the same program";
    Console().PushButtonRecord.Push();
    EXPECT_EQ(OnlySound(), own);
}

TEST_F(Killed, WhatIsSavedIsWholeHoweverManySaveItAndWheneverTheyDie) {
    const FolderItem file = *desktop.Folder(SpecialFolder::Preferences).Child("saved");
    const auto expectAWholeText = [&file] {
        const std::string text = ContentOf(file);
        ASSERT_EQ(text, std::string(100'000, text.empty() ? '?' : text[0]));
    };
    const auto save = [&file](char letter) {
        OtherDesktop own;
        if (!ReplaceFile(own, file, std::string(100'000, letter))) {
            _exit(1);
        }
    };
    for (int round = 0; round < 4; ++round) {
        OtherProgram one([&save] { save('a'); }, [&save] { save('a'); });
        OtherProgram other([&save] { save('b'); }, [&save] { save('b'); });
        for (int look = 0; look < 20; ++look) {
            usleep(static_cast<useconds_t>(500 + 137 * look + 61 * round));
            expectAWholeText();
        }
        EXPECT_TRUE(one.Kill() && other.Kill()) << "one has cost the other its save";
        expectAWholeText();
    }
}

} // namespace
} // namespace larkspool
