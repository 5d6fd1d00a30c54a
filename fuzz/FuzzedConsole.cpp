#include "FuzzedConsole.h"

#include "audio/WavFile.h"
#include "platform/ByteOrder.h"
#include "shell/Preferences.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

namespace larkspool::fuzz {

namespace {

constexpr std::string_view EndOfRequest = "client_max_window_bits\r\n\r\n";
constexpr int TextPort = 58283;
constexpr int SoundPort = 58286;
const std::vector<std::int16_t> GoodSound = {11, -22, 3333, -4444, 32767, -32768};

std::string Bytes(const std::vector<std::int16_t>& samples) {
    std::string bytes(samples.size() * 2, '\0');
    std::memcpy(bytes.data(), samples.data(), bytes.size());
    return bytes;
}

// A word, a colon, a number and a zero byte.
void CheckReply(std::string_view bytes) {
    Require(bytes.find('\0') == bytes.size() - 1, "a text ends in a zero");
    const std::size_t colon = bytes.find(':');
    const std::string_view word = bytes.substr(0, colon);
    Require(word == "vrxcount" || word == "streamrate" || word == "freq", "peers know the word");
    const std::string_view number = bytes.substr(colon + 1, bytes.size() - colon - 2);
    Require(!number.empty() && number.back() != '.' &&
                number.find_first_not_of("-.0123456789") == std::string::npos,
            "peers can read the number");
}

} // namespace

FuzzedConsole::FuzzedConsole() {
    deployment.directoryHost = "directory.example.net";
    deployment.versionHost = "updates.example.net";
    deployment.downloadPage = "http://updates.example.net/download";
    deployment.programNumber = 1;
}

void FuzzedConsole::CheckBounds() {
    CheckLog();
    CheckSent(Audio().socket);
    CheckSent(Waterfall().socket);
    CheckDatagrams();
    desktop.sound.played.clear();
    desktop.sound.TakeCalls();
}

void FuzzedConsole::CheckLog() {
    const Listbox& log = Console().Listbox1;
    Require(log.ListCount() <= 2000, "the log keeps its newest rows only");
    Require(log.Cell(log.LastIndex(), 0).size() <= 1000, "a row of the log is cut");
    Require(Console().TextArea1.Text().size() <= std::size_t{64} * 1024, "the replies are cut");
    const PopupMenu& receivers = Console().PopupMenuKiwiList;
    Require(receivers.ListIndex() < receivers.ListCount(), "the popup shows a row that it has");
}

void FuzzedConsole::CheckSent(VirtualTCPSocket& link) {
    const std::string sent = link.TakeSent();
    const std::size_t end = sent.rfind(EndOfRequest);
    // Throws where that isn't a client's frames, and nothing catches it.
    CommandsIn(end == std::string::npos ? sent : sent.substr(end + EndOfRequest.size()));
}

void FuzzedConsole::CheckDatagrams() {
    for (const auto& [port, bytes] : desktop.sound.datagrams) {
        Require(port == TextPort || port == SoundPort, "datagrams go to the peer's two ports");
        Require(port != SoundPort || bytes.size() == AudioStream::BlockBytes,
                "blocks of sound have one size");
        if (port == TextPort) {
            CheckReply(bytes);
        }
    }
    desktop.sound.datagrams.clear();
}

void FuzzedConsole::CheckThatAGoodReceiverIsHeard() {
    Console().PopupMenuMode.SetListIndex(0);
    Console().TextFieldFreq.SetText("9410");
    Console().TextFieldPort.SetText("8073");
    Console().TextFieldAddress.SetText("good.example.net");
    Console().PushButtonConnect.Push();
    desktop.Advance(1);
    Require(Audio().socket.IsConnecting() && Waterfall().socket.IsConnecting(), "a user can leave");
    Require(Audio().socket.address == "good.example.net" && Audio().socket.port == 8073,
            "the user chooses the receiver");
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
    Audio().Sound(0, GoodSound);
    desktop.Advance(0);
    Require(desktop.sound.played == GoodSound, "the receiver is heard");
    Console().PushButtonRecord.Push();
    CheckRecordings(Bytes(GoodSound));
}

bool FuzzedConsole::IsRecording() {
    return Console().audioRecording != nullptr && Console().audioRecording->isRecording;
}

void FuzzedConsole::CheckRecordings(std::string_view expected) {
    bool found = expected.empty();
    for (const FolderItem& file : Recordings()) {
        const auto shape = LookAtWavFile(file);
        Require(shape.has_value(), "a recording has a header");
        Require(shape->headerSamples == shape->wholeSamples, "a recording is whole");
        found = found || ContentOf(file).substr(44) == expected;
    }
    Require(found, "the receiver is recorded");
}

std::string FuzzedConsole::QuitAndCheckFiles() {
    Quit();
    Require(desktop.hasEnded, "the program ends when it is told to");
    CheckRecordings({});
    std::string settings = ContentOf(PreferencesFile());
    // What could not work comes back as its default, in its place.
    Require(EncodePreferences(DecodePreferences(settings)).size() == settings.size(),
            "the settings come back whole");
    return settings;
}

FolderItem FuzzedConsole::PreferencesFile() {
    return *desktop.Folder(SpecialFolder::Preferences).Child("Larkspool Prefs");
}

std::string FuzzedConsole::ContentOf(const FolderItem& file) {
    std::ifstream stream(file.Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace larkspool::fuzz
