#include "audio/RecordingRepair.h"
#include "audio/WavFile.h"
#include "platform/Text.h"
#include "support/Files.h"
#include "support/VirtualDesktop.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(WavFile, HasTheHeaderThatEveryPlayerKnowsAndSizesThatNeverWrap) {
    using namespace std::string_view_literals;
    EXPECT_EQ(WavHeader(12000, 0), "RIFF\x24\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0"
                                   "\xe0\x2e\0\0\xc0\x5d\0\0\2\0\x10\0data\0\0\0\0"sv);
    const std::pair<std::int64_t, std::uint32_t> sizes[] = {{18'000, 36'000},
                                                            {1'073'741'824, 2'147'483'648},
                                                            {2'147'483'629, 4'294'967'258},
                                                            {2'147'483'630, 4'294'967'258},
                                                            {5'000'000'000, 4'294'967'258}};
    for (const auto& [samples, dataBytes] : sizes) {
        const std::string header = WavHeader(250'000, samples);
        EXPECT_EQ(LittleEndianAt(header, 40), dataBytes) << samples;
        EXPECT_EQ(LittleEndianAt(header, 4), 36 + dataBytes) << samples;
    }
}

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
    const std::string unfinished = WavHeader(12000, 0) + sound;
    const std::string finished = WavHeader(12000, 10) + sound;
    VirtualDesktop desktop;
};

TEST_F(Repair, GivesAFileItsSizesWhereverItsHeaderBrokeOffAndLeavesTheSamples) {
    const std::pair<std::int64_t, std::string> recordings[] = {
        {12000, sound},
        {20250, sound + "x"},           // cut in the middle of a sample
        {0, std::string(66'002, 's')}}; // sizes of three bytes
    for (const auto& [rate, heard] : recordings) {
        const std::string start = WavHeader(rate, 0);
        const std::string end = WavHeader(rate, static_cast<std::int64_t>(heard.size() / 2));
        for (std::size_t written = 0; written <= WavHeaderSize; ++written) {
            Put(File(name), end.substr(0, written) + start.substr(written) + heard);
            RunToTheEnd();
            EXPECT_EQ(ContentOf(File(name)), end + heard) << rate << ' ' << written;
        }
    }
}

TEST_F(Repair, LeavesEveryOtherShapeAlone) {
    std::vector<std::string> shapes = {unfinished.substr(0, 43),
                                       unfinished.substr(0, 45), // nothing recorded
                                       WavHeader(12000, 9) + sound, finished};
    for (std::size_t at = 0; at < WavHeaderSize; ++at) {
        shapes.push_back(unfinished);
        shapes.back()[at] = '\x7f';
    }
    for (const std::string& shape : shapes) {
        Put(File(name), shape);
        RunToTheEnd();
        EXPECT_EQ(ContentOf(File(name)), shape);
    }
}

TEST_F(Repair, LooksAtOurOwnNamesOnly) {
    const std::string others[] = {"Recording.WAV", "KiwiRecording-1.wav",
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
    EXPECT_EQ(ContentOf(File(name)), finished) << "the odd ones must not stop it";
}

TEST_F(Repair, AHugeFolderDoesNotHoldUpTheEventLoop) {
    constexpr int Files = 500;
    const auto file = [this](int i) { return File("KiwiRecording-" + Str(i) + ".WAV"); };
    const auto repaired = [&] {
        int count = 0;
        for (int i = 0; i < Files; ++i) {
            count += ContentOf(file(i)) == finished ? 1 : 0;
        }
        return count;
    };
    for (int i = 0; i < Files; ++i) {
        Put(file(i), unfinished);
    }
    RecordingRepair repair(desktop);
    repair.Start();
    desktop.Advance(4.9);
    EXPECT_EQ(repaired(), 0);
    desktop.Advance(0.1);
    EXPECT_GT(repaired(), 0);
    EXPECT_LT(repaired(), 50);
    desktop.Advance(30);
    EXPECT_EQ(repaired(), Files);
}

} // namespace
} // namespace larkspool
