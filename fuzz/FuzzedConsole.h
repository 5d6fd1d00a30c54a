#pragma once

#include "Input.h"
#include "audio/WavFile.h"
#include "shell/Preferences.h"
#include "support/ConsoleFixture.h"

namespace larkspool::fuzz {

// The whole program on a virtual desktop, made for one input. It has the tests' ways of acting as
// the user and as the receiver, and checks of its own: a test framework's would let the process go
// on.
class FuzzedConsole : public ConsoleFixture {
  protected:
    // What holds at any moment: the log and the texts are bounded, what goes out is well formed.
    // Takes what the program has sent and played so far.
    void CheckBounds() {
        const Listbox& log = Console().Listbox1;
        Require(log.ListCount() <= 2000, "the log keeps its newest rows only");
        Require(log.Cell(log.LastIndex(), 0).size() <= 1000, "a row of the log is cut");
        Require(Console().TextArea1.Text().size() <= std::size_t{64} * 1024, "replies are cut");
        const PopupMenu& receivers = Console().PopupMenuKiwiList;
        Require(receivers.ListIndex() < receivers.ListCount(), "the popup shows a row that it has");
        for (VirtualTCPSocket* link : desktop.tcpSockets) {
            constexpr std::string_view EndOfRequest = "client_max_window_bits\r\n\r\n";
            const std::string sent = link->TakeSent();
            const std::size_t end = sent.rfind(EndOfRequest);
            // Throws where that isn't a client's frames, and nothing catches it.
            CommandsIn(end == std::string::npos ? sent : sent.substr(end + EndOfRequest.size()));
        }
        for (const auto& [port, bytes] : desktop.sound.datagrams) {
            CheckDatagram(port, bytes);
        }
        desktop.sound.datagrams.clear();
        desktop.sound.played.clear();
        desktop.sound.TakeCalls();
    }

    // The user turns to a receiver that behaves, hears it and records it.
    void CheckThatAGoodReceiverIsHeard() {
        const std::vector<std::int16_t> sound = {11, -22, 3333, -4444, 32767, -32768};
        Console().PopupMenuMode.SetListIndex(0);
        Console().TextFieldFreq.SetText("9410");
        Console().TextFieldPort.SetText("8073");
        Console().TextFieldAddress.SetText("good.example.net");
        Console().PushButtonConnect.Push();
        desktop.Advance(1);
        for (const VirtualTCPSocket* link : desktop.tcpSockets) {
            Require(link->IsConnecting(), "a user can leave");
            Require(link->address == "good.example.net" && link->port == 8073,
                    "the user chooses the receiver");
        }
        AcceptLinks();
        Upgrade();
        Stream();
        CheckBounds();
        desktop.Advance(0.2);
        Require(Console().PushButtonRecord.Enabled(), "what is heard can be recorded");
        if (!IsRecording()) { // a schedule that wanted a receiver may have begun
            Console().PushButtonRecord.Push();
        }
        Require(IsRecording(), "a press of the button records");
        Audio().Sound(0, sound);
        desktop.Advance(0);
        Require(desktop.sound.played == sound, "the receiver is heard");
        Console().PushButtonRecord.Push();
        CheckRecordings({reinterpret_cast<const char*>(sound.data()), 2 * sound.size()});
    }

    // The program ends; every recording is whole and the settings can be read again. The settings
    // as they lie on disk.
    std::string QuitAndCheckFiles() {
        Quit();
        Require(desktop.hasEnded, "the program ends when it is told to");
        CheckRecordings({});
        std::string settings = ContentOf(PreferencesFile());
        // What could not work comes back as its default, in its place.
        Require(EncodePreferences(DecodePreferences(settings)).size() == settings.size(),
                "the settings come back whole");
        return settings;
    }

    FolderItem PreferencesFile() {
        return *desktop.Folder(SpecialFolder::Preferences).Child("Larkspool Prefs");
    }

  private:
    // A block of sound, or a word, a colon, a number and a zero byte.
    static void CheckDatagram(std::int64_t port, std::string_view bytes) {
        if (port == 58286) {
            Require(bytes.size() == AudioStream::BlockBytes, "blocks of sound have one size");
            return;
        }
        Require(port == 58283, "datagrams go to the peer's two ports");
        Require(bytes.find('\0') == bytes.size() - 1, "a text ends in a zero");
        const std::size_t colon = bytes.find(':');
        const std::string_view word = bytes.substr(0, colon);
        Require(word == "vrxcount" || word == "streamrate" || word == "freq", "peers know it");
        const std::string_view number = bytes.substr(colon + 1, bytes.size() - colon - 2);
        Require(!number.empty() && number.back() != '.' &&
                    number.find_first_not_of("-.0123456789") == std::string::npos,
                "peers can read the number");
    }
    bool IsRecording() {
        return Console().audioRecording != nullptr && Console().audioRecording->isRecording;
    }
    void CheckRecordings(std::string_view expected) {
        bool found = expected.empty();
        for (const FolderItem& file : Recordings()) {
            const auto shape = LookAtWavFile(file);
            Require(shape.has_value(), "a recording has a header");
            Require(shape->headerSamples == shape->wholeSamples, "a recording is whole");
            found = found || ContentOf(file).substr(44) == expected;
        }
        Require(found, "the receiver is recorded");
    }
};

} // namespace larkspool::fuzz
