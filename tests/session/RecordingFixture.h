#pragma once

#include "support/ConsoleFixture.h"
#include "support/Files.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace larkspool {

// A console that streams, and a receiver whose every frame is different, so that a lost, doubled or
// displaced sample shows.
class RecordingFixture : public ConsoleFixture {
  protected:
    static constexpr std::size_t FrameSamples = 48;

    // What the next frame will be in a file.
    std::string NextFrame() const {
        std::string bytes;
        for (std::size_t i = 0; i < FrameSamples; ++i) {
            const auto value = static_cast<std::uint16_t>(257UL * sequence + i * 3 + 2);
            bytes += static_cast<char>(value & 0xFFU);
            bytes += static_cast<char>(value >> 8U);
        }
        return bytes;
    }

    // The receiver sends these bytes of a file in its own order.
    void Send(std::string wire) {
        for (std::size_t i = 0; i + 1 < wire.size(); i += 2) {
            std::swap(wire[i], wire[i + 1]);
        }
        Audio().Say("SND", SoundBody(sequence++, {}) + wire);
        desktop.Advance(0);
    }
    // Gives what should come to be in the file.
    std::string SendFrames(int count) {
        std::string sent;
        for (int i = 0; i < count; ++i) {
            const std::string frame = NextFrame();
            Send(frame);
            sent += frame;
        }
        return sent;
    }

    void PressRecord() {
        desktop.Advance(0.1); // the button follows the session ten times a second
        ASSERT_TRUE(Console().PushButtonRecord.Enabled());
        Console().PushButtonRecord.Push();
    }
    std::string Caption() { return Console().PushButtonRecord.Caption(); }
    // The only recording there is, which has ended.
    std::string OnlySound(std::uint32_t rate = 12000) {
        const auto files = Recordings();
        EXPECT_EQ(files.size(), 1U);
        return files.empty() ? "" : SoundIn(files.front(), rate);
    }
    void ForgetRecordings() {
        std::filesystem::remove_all(desktop.Folder(SpecialFolder::Documents).Path());
    }

    std::uint32_t sequence = 0;
};

} // namespace larkspool
