#include "audio/RecordingRepair.h"
#include "audio/WavHeader.h"
#include "support/Files.h"
#include "support/VirtualDesktop.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

class Repair : public ::testing::Test {
  protected:
    FolderItem File(const std::string& file) {
        return *desktop.Folder(SpecialFolder::Documents).Child(file);
    }
    void RunToTheEnd() {
        RecordingRepair repair(desktop);
        repair.Start();
        desktop.Advance(600);
    }

    const std::string name = "KiwiRecording-2027-01-15T08_00_01Z10000.000am_a_8073.WAV";
    const std::string sound = "twenty bytes of tone";
    VirtualDesktop desktop;
};

TEST_F(Repair, GivesAFileItsSizesAndLeavesTheSamples) {
    for (const std::int64_t rate : {12000, 20250, 0}) {
        Put(File(name), WavHeader(rate, 0) + sound);
        RunToTheEnd();
        EXPECT_EQ(ContentOf(File(name)), WavHeader(rate, 10) + sound);
    }
    Put(File(name), WavHeader(12000, 0) + sound + "x"); // cut in the middle of a sample
    RunToTheEnd();
    EXPECT_EQ(ContentOf(File(name)), WavHeader(12000, 10) + sound + "x");
}

TEST_F(Repair, FinishesAHeaderWhoseWritingBrokeOff) {
    const std::string start = WavHeader(12000, 0);
    const std::string sounds[] = {sound, std::string(66'002, 's')}; // sizes of one byte, of three
    for (const std::string& heard : sounds) {
        const std::string end = WavHeader(12000, static_cast<std::int64_t>(heard.size() / 2));
        for (std::size_t written = 0; written <= WavHeaderSize; ++written) {
            Put(File(name), end.substr(0, written) + start.substr(written) + heard);
            RunToTheEnd();
            EXPECT_EQ(ContentOf(File(name)), end + heard) << written;
        }
    }
}

TEST_F(Repair, LeavesEveryOtherShapeAlone) {
    const auto with = [this](std::size_t at, char byte) {
        std::string file = WavHeader(12000, 0) + sound;
        file.at(at) = byte;
        return file;
    };
    std::vector<std::string> shapes = {"",
                                       "RIFF",
                                       WavHeader(12000, 0).substr(0, 43),
                                       WavHeader(12000, 0),       // nothing recorded
                                       WavHeader(12000, 0) + "x", // nor here
                                       WavHeader(12000, 9) + sound,
                                       WavHeader(12000, 10) + sound,
                                       std::string(64, '\0')};
    for (const std::size_t at :
         {0U, 4U, 7U, 8U, 15U, 16U, 20U, 22U, 28U, 32U, 34U, 36U, 40U, 43U}) {
        shapes.push_back(with(at, '\x7f'));
    }
    for (const std::string& shape : shapes) {
        Put(File(name), shape);
        RunToTheEnd();
        EXPECT_EQ(ContentOf(File(name)), shape);
    }
}

TEST_F(Repair, LooksAtOurOwnNamesOnly) {
    const std::string unfinished = WavHeader(12000, 0) + sound;
    const std::vector<std::string> others = {"Recording.WAV", "KiwiRecording-1.wav",
                                             "KiwiRecording-1.WAV.part", "My KiwiRecording-1.WAV"};
    for (const std::string& other : others) {
        Put(File(other), unfinished);
    }
    File("KiwiRecording-folder.WAV").CreateFolder();
    std::filesystem::create_symlink("nowhere", File("KiwiRecording-link.WAV").Path());
    Put(File(name), unfinished);
    RunToTheEnd();
    for (const std::string& other : others) {
        EXPECT_EQ(ContentOf(File(other)), unfinished) << other;
    }
    EXPECT_EQ(ContentOf(File(name)), WavHeader(12000, 10) + sound)
        << "the odd ones must not stop it";
}

TEST_F(Repair, LeavesAFileToWhoeverHoldsIt) {
    const std::string unfinished = WavHeader(12000, 0) + sound;
    Put(File(name), unfinished);
    auto held = desktop.Lock(File(name));
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(desktop.Lock(File(name)), nullptr);
    RunToTheEnd();
    EXPECT_EQ(ContentOf(File(name)), unfinished);
    held.reset();
    RunToTheEnd();
    EXPECT_EQ(ContentOf(File(name)), WavHeader(12000, 10) + sound);
    EXPECT_NE(desktop.Lock(File(name)), nullptr) << "the repair has kept its lock";
    EXPECT_NE(desktop.Lock(File("missing")), nullptr);
}

TEST_F(Repair, AHugeFolderDoesNotHoldUpTheEventLoop) {
    constexpr int Files = 3000;
    const auto unfinished = WavHeader(12000, 0) + sound;
    for (int i = 0; i < Files; ++i) {
        Put(File("KiwiRecording-" + std::to_string(i) + ".WAV"), unfinished);
    }
    const auto repaired = [&] {
        int count = 0;
        for (int i = 0; i < Files; ++i) {
            count += ContentOf(File("KiwiRecording-" + std::to_string(i) + ".WAV")) == unfinished
                         ? 0
                         : 1;
        }
        return count;
    };
    RecordingRepair repair(desktop);
    repair.Start();
    desktop.Advance(4.9);
    EXPECT_EQ(repaired(), 0);
    desktop.Advance(0.1);
    const int inOneEvent = repaired();
    EXPECT_GT(inOneEvent, 0);
    EXPECT_LT(inOneEvent, 50);
    desktop.Advance(30);
    EXPECT_EQ(repaired(), Files);
}

} // namespace
} // namespace larkspool
