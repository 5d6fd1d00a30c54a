#include "audio/RecordingTexts.h"
#include "audio/WavFile.h"
#include "support/Files.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(RecordingFiles, TheHeaderIsTheOneThatEveryPlayerKnows) {
    using namespace std::string_view_literals;
    EXPECT_EQ(WavHeader(12000, 0), "RIFF\x24\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0"
                                   "\xe0\x2e\0\0\xc0\x5d\0\0\2\0\x10\0data\0\0\0\0"sv);
    EXPECT_EQ(WavHeader(12000, 18000).substr(40), "\xa0\x8c\0\0"sv);
}

TEST(RecordingFiles, SizesNeverWrap) {
    const std::pair<std::int64_t, std::uint32_t> sizes[] = {{1'073'741'824, 2'147'483'648},
                                                            {2'147'483'629, 4'294'967'258},
                                                            {2'147'483'630, 4'294'967'258},
                                                            {5'000'000'000, 4'294'967'258},
                                                            {-1, 0}};
    for (const auto& [samples, dataBytes] : sizes) {
        const std::string header = WavHeader(250'000, samples);
        EXPECT_EQ(LittleEndianAt(header, 40), dataBytes) << samples;
        EXPECT_EQ(LittleEndianAt(header, 4), 36 + dataBytes) << samples;
    }
}

TEST(RecordingFiles, TheNameTellsWhenAndWhat) {
    const auto name = [](double frequency, const std::string& mode, const std::string& address) {
        AudioRecordingClass recording;
        recording.frequency = frequency;
        recording.mode = mode;
        recording.remoteAddress = address;
        recording.remotePort = 8073;
        return RecordingName(recording, Date::FromUnixSeconds(1614834367));
    };
    const std::string start = "KiwiRecording-2021-03-04T05_06_07Z";
    EXPECT_EQ(name(123456.5, "iq", "example"), start + "123456.500iq_example_8073.WAV");
    EXPECT_EQ(name(7.0125, "am", "10.0.0.7"), start + "7.013am_10.0.0.7_8073.WAV");
    EXPECT_EQ(name(0, "lsb", ""), start + ".000lsb__8073.WAV");
    EXPECT_TRUE(IsRecordingName(name(0, "lsb", "")));
}

TEST(RecordingFiles, TheTimeStartsOverAfterADay) {
    EXPECT_EQ(SecondsToTimeString(3661), "01:01:01");
    EXPECT_EQ(SecondsToTimeString(86399), "23:59:59");
    EXPECT_EQ(SecondsToTimeString(86400), "00:00:00");
}

} // namespace
} // namespace larkspool
