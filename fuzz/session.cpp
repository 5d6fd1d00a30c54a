// A session with a hostile world. The input is a list of acts, each a letter and what belongs to
// it: bytes that a receiver sends on either link, whole frames or pieces of anything; links that
// go; time that passes; what the user, peers on the network and the web servers do meanwhile. In
// the end the user turns to a receiver that behaves, and must be able to hear and record it.
#include "FuzzedConsole.h"
#include "schedule/SkedWindow.h"
#include "support/PictureGraphics.h"

#include <map>

namespace larkspool::fuzz {
namespace {

class Session : public FuzzedConsole {
  public:
    explicit Session(std::string_view bytes) : input(bytes) {
        deployment.directoryHost = "directory.example.net";
        deployment.versionHost = "updates.example.net";
        deployment.downloadPage = "http://updates.example.net/download";
        deployment.programNumber = 1;
        Start();
        Console().CheckBoxUpdateWaterfall.SetValue(true);
        PressConnect();
        AcceptLinks();
    }
    void TestBody() override {}

    void Run() {
        while (!input.Empty()) {
            const auto act = Acts().find(static_cast<char>(input.Byte()));
            if (act != Acts().end()) {
                act->second(*this);
            }
            desktop.Advance(0);
            CheckBounds();
        }
        CloseSchedules();
        CheckThatAGoodReceiverIsHeard();
        QuitAndCheckFiles();
    }

  private:
    using Act = void (*)(Session&);

    static const std::map<char, Act>& Acts() {
        static const std::map<char, Act> acts = {
            // Bytes on a link, the same over and over, whole frames, long ones.
            {'A', [](Session& s) { s.Audio().socket.Deliver(s.Piece()); }},
            {'W', [](Session& s) { s.Waterfall().socket.Deliver(s.Piece()); }},
            {'b', [](Session& s) { s.Audio().socket.Deliver(s.LongPiece()); }},
            {'a', [](Session& s) { s.Audio().Say("", s.Piece()); }},
            {'w', [](Session& s) { s.Waterfall().Say("", s.Piece()); }},
            {'l', [](Session& s) { s.Audio().Say("", s.LongPiece()); }},
            {'L', [](Session& s) { s.Waterfall().Say("", s.LongPiece()); }},
            // Links come, speak WebSocket, at once or in pieces, and go.
            {'c', [](Session& s) { s.AcceptLinks(); }},
            {'u', [](Session& s) { s.Audio().Upgrade(), s.Waterfall().Upgrade(); }},
            {'v', [](Session& s) { s.UpgradeInPieces(s.input.Byte() + std::size_t{1}); }},
            {'x', [](Session& s) { s.Audio().socket.Fail(); }},
            {'y', [](Session& s) { s.Waterfall().socket.Fail(); }},
            {'X', [](Session& s) { s.Audio().socket.Fail(s.input.Byte()); }},
            // Remote control, rig control, and the page that was asked for last.
            {'p', [](Session& s) { s.desktop.udpSockets.at(0)->Deliver(s.Piece()); }},
            {'G', [](Session& s) { s.AskRig(s.Piece() + "\n"); }},
            {'h', [](Session& s) { s.AnswerWebRequest(s.LongPiece()); }},
            // Time passes: tenths of seconds, until a reconnect, until a silent link is given up.
            {'t', [](Session& s) { s.Pass(s.input.Byte() / 10.0); }},
            {'T', [](Session& s) { s.Pass(61); }},
            {'S', [](Session& s) { s.Pass(31); }},
            {'j', [](Session& s) { s.SetClock(s.input.Byte() - 128); }},
            // The user.
            {'f', [](Session& s) { s.Console().TextFieldFreq.SetText(s.Piece()); }},
            {'q',
             [](Session& s) { s.Console().TextFieldFreq.Wheel(0, (s.input.Byte() - 128) * 120); }},
            {'e', [](Session& s) { s.Console().TextFieldLowCut.SetText(s.Piece()); }},
            {'m', [](Session& s) { s.Console().PopupMenuMode.Pick(s.input.Byte()); }},
            {'s', [](Session& s) { s.Console().SliderSquelch.SetValue(s.input.Byte()); }},
            {'g', [](Session& s) { s.Console().SliderWaterfallGain.SetValue(s.input.Byte() * 2); }},
            {'k',
             [](Session& s) { s.Console().WaterfallCanvas.mouseDown(s.input.Byte() * 4, 20); }},
            {'i', [](Session& s) { s.Console().TextFieldSquelchedDeadSpace.SetText(s.Piece()); }},
            {'C', [](Session& s) { s.Console().PushButtonConnect.Push(); }},
            {'D', [](Session& s) { s.Console().PushButtonDisconnect.Push(); }},
            {'r', [](Session& s) { s.Console().PushButtonRecord.Push(); }},
            {'R', [](Session& s) { Toggle(s.Console().CheckBoxReconnect); }},
            {'N', [](Session& s) { Toggle(s.Console().CheckBoxNetwork); }},
            {'z', [](Session& s) { Toggle(s.Console().CheckBoxUpdateWaterfall); }},
            {'K', [](Session& s) { s.Console().PopupMenuKiwiList.Pick(s.input.Byte()); }},
            {'o', [](Session& s) { s.OpenSchedule(s.Piece()); }},
            {'P', [](Session& s) { s.Paint(); }},
            {'B', [](Session& s) { s.StartWith(s.input.Rest()); }}, // these settings
        };
        return acts;
    }

    std::string Piece() { return std::string(input.CountedPiece()); }

    // The next piece, over and over up to so many times 64 bytes.
    std::string LongPiece() {
        const std::size_t length = input.Byte() * std::size_t{64};
        const std::string piece = Piece();
        std::string bytes = piece;
        while (!piece.empty() && bytes.size() < length) {
            bytes += piece;
        }
        return bytes;
    }

    void UpgradeInPieces(std::size_t size) {
        const std::string_view reply = "HTTP/1.1 101 Switching Protocols\r\n\r\n";
        for (std::size_t at = 0; at < reply.size(); at += size) {
            Audio().socket.Deliver(reply.substr(at, size));
            desktop.Advance(0);
        }
    }

    void AskRig(const std::string& line) {
        if (rig == nullptr || !rig->IsOpen()) {
            rig = desktop.tcpServers.at(0)->Connect();
        }
        rig->Send(line);
        desktop.Advance(0);
        const std::string answer = rig->TakeReceived();
        Require(answer.empty() || answer.ends_with('\n'), "peers can read the answer");
    }

    void AnswerWebRequest(const std::string& page) {
        const auto& open = *desktop.httpSockets;
        if (!open.empty() && !open.back()->url.empty()) {
            open.back()->Deliver(page);
        }
    }

    void Pass(double seconds) {
        constexpr double MostTime = 130; // seconds in one run; they cost the runner real ones
        if (passed + seconds <= MostTime) {
            passed += seconds;
            desktop.Advance(seconds);
        }
    }

    // By hours at first, then by more and more, up to two centuries.
    void SetClock(double step) {
        desktop.queue.SetNow(desktop.UtcNow() + step * step * step * 3600.0);
    }

    // A schedule from a file, which begins to run at once.
    void OpenSchedule(const std::string& text) {
        constexpr std::size_t MostWindows = 4;
        if (desktop.windows.size() > MostWindows) {
            return;
        }
        const FolderItem file = *desktop.Folder(SpecialFolder::Program).Child("schedule");
        Put(file, text);
        desktop.chosenFiles.emplace_back(file);
        desktop.applicationHandlers.Perform("FileOpenSchedule");
        desktop.Advance(0);
        auto& window = dynamic_cast<SkedWindow&>(*desktop.windows.back());
        std::vector<MenuItem> items;
        window.ListboxSkeds.constructContextualMenu(items);
        window.ListboxSkeds.contextualMenuAction(items.front()); // "Enable schedules"
    }

    void CloseSchedules() {
        while (desktop.windows.back() != &Console()) {
            desktop.windows.back()->Close();
            desktop.Advance(0);
        }
    }

    static void Toggle(CheckBox& box) { box.SetValue(!box.Value()); }

    void Paint() {
        PictureGraphics paper(64, 16);
        Console().WaterfallCanvas.Event_Paint(paper);
    }

    // The program finds these settings at a new start.
    void StartWith(std::string_view settings) {
        CloseSchedules();
        QuitAndCheckFiles();
        desktop.sound.devices = {{"Speakers"}, {"Headphones"}};
        Put(PreferencesFile(), settings);
        Start();
        CheckBounds();
        const std::string first = QuitAndCheckFiles();
        Start();
        Require(QuitAndCheckFiles() == first, "starting and quitting changes no setting");
        Start();
    }

    Input input;
    double passed = 0; // seconds
    std::shared_ptr<VirtualLink> rig;
};

} // namespace

void WholeSession(std::string_view bytes) { Session(bytes).Run(); }

} // namespace larkspool::fuzz
