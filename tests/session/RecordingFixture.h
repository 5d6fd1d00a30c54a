#pragma once

#include "support/ConsoleFixture.h"
#include "support/Files.h"

#include <cstdint>
#include <string>

namespace larkspool {

// The sound in a file, whose header must be what players expect. Written without any of the
// program's own knowledge of such files.
inline std::string SoundIn(const FolderItem& item, std::uint32_t rate = 12000) {
    const std::string file = ContentOf(item);
    if (file.size() < 44) {
        ADD_FAILURE() << item.Name() << " has " << file.size() << " bytes";
        return {};
    }
    const std::uint32_t dataBytes = LittleEndianAt(file, 40);
    EXPECT_EQ(file.substr(0, 4) + file.substr(8, 8) + file.substr(36, 4), "RIFFWAVEfmt data");
    EXPECT_EQ(LittleEndianAt(file, 4), 36 + dataBytes);
    EXPECT_EQ(LittleEndianAt(file, 16), 16U);
    EXPECT_EQ(LittleEndianAt(file, 20), 0x00010001U) << "PCM, one channel";
    EXPECT_EQ(LittleEndianAt(file, 24), rate);
    EXPECT_EQ(LittleEndianAt(file, 28), 2 * rate);
    EXPECT_EQ(LittleEndianAt(file, 32), 0x00100002U) << "two bytes a frame, 16 bits a sample";
    EXPECT_EQ(dataBytes % 2, 0U);
    EXPECT_EQ((file.size() - 44) / 2, dataBytes / 2) << item.Name();
    return file.substr(44, dataBytes);
}

// A console that streams, and a receiver whose every frame is different, so that a lost, doubled or
// displaced sample shows.
class RecordingFixture : public ConsoleFixture {
  protected:
    static constexpr std::size_t FrameSamples = 48;

    // What the next frame will be in a file.
    std::string NextFrame() const {
        std::string bytes;
        for (std::size_t i = 0; i < FrameSamples; ++i) {
            const auto value = static_cast<std::uint16_t>(sequence * 257 + i * 3 + 2);
            bytes += static_cast<char>(value & 0xFFU);
            bytes += static_cast<char>(value >> 8U);
        }
        return bytes;
    }

    // Sends it, and whatever bytes the receiver adds; gives what should come to be in the file.
    std::string SendFrame(const std::string& added = {}) {
        const std::string little = NextFrame() + added;
        std::string wire = little;
        for (std::size_t i = 0; i + 1 < wire.size(); i += 2) {
            std::swap(wire[i], wire[i + 1]);
        }
        Audio().Say("SND", SoundBody(sequence++, {}) + wire);
        desktop.Advance(0);
        return little;
    }
    std::string SendFrames(int count) {
        std::string sent;
        for (int i = 0; i < count; ++i) {
            sent += SendFrame();
        }
        return sent;
    }
    void SendQuiet() {
        Audio().Sound(sequence++, std::vector<std::int16_t>(FrameSamples, 1));
        desktop.Advance(0);
    }

    void PressRecord() {
        desktop.Advance(0.1); // the button follows the session ten times a second
        ASSERT_TRUE(Console().PushButtonRecord.Enabled());
        Console().PushButtonRecord.Push();
    }
    std::string Caption() { return Console().PushButtonRecord.Caption(); }
    // The only recording there is, which has ended.
    std::string OnlySound() {
        const auto files = Recordings();
        EXPECT_EQ(files.size(), 1U);
        return files.empty() ? "" : SoundIn(files.front());
    }

    std::uint32_t sequence = 0;
};

} // namespace larkspool
