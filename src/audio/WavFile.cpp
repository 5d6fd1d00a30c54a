#include "audio/WavFile.h"

#include "platform/ByteOrder.h"
#include "platform/Text.h"

namespace larkspool {

std::string WavHeader(std::int64_t sampleRate, std::int64_t samples) {
    constexpr std::uint32_t BytesPerSample = 2;
    constexpr std::uint32_t SizeBehindFirstFields = 36;
    const auto rate = static_cast<std::uint32_t>(sampleRate);
    const auto dataBytes = static_cast<std::uint32_t>(samples) * BytesPerSample;
    BinaryStream header;
    header.SetByteOrder(ByteOrder::LittleEndian);
    header.WriteString("RIFF");
    header.WriteUInt32(SizeBehindFirstFields + dataBytes);
    header.WriteString("WAVEfmt ");
    header.WriteUInt32(16); // bytes of the format
    header.WriteUInt16(1);  // PCM
    header.WriteUInt16(1);  // channels
    header.WriteUInt32(rate);
    header.WriteUInt32(rate * BytesPerSample);
    header.WriteUInt16(BytesPerSample);
    header.WriteUInt16(16); // bits a sample
    header.WriteString("data");
    header.WriteUInt32(dataBytes);
    return header.TakeBytes();
}

std::string RecordingName(const AudioRecordingClass& recording, const Date& start) {
    return "KiwiRecording-" + Format(start.Year(), "0000") + "-" + Format(start.Month(), "00") +
           "-" + Format(start.Day(), "00") + "T" + Format(start.Hour(), "00") + "_" +
           Format(start.Minute(), "00") + "_" + Format(start.Second(), "00") + "Z" +
           Format(recording.frequency, "#####.000") + recording.mode + "_" +
           recording.remoteAddress + "_" + Str(recording.remotePort) + ".WAV";
}

std::string SecondsToTimeString(std::int64_t seconds) {
    const Date time = Date::FromTotalSeconds(static_cast<double>(seconds));
    return Format(time.Hour(), "00") + ":" + Format(time.Minute(), "00") + ":" +
           Format(time.Second(), "00");
}

} // namespace larkspool
