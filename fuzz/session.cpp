// A session with a hostile world. The input is a list of acts, each a letter and what belongs to
// it: bytes that a receiver sends on either link, whole frames or pieces of anything; links that
// go; time that passes; what the user, a peer on the network and the web servers do meanwhile. In
// the end the user turns to a receiver that behaves, and must be able to hear and record it.
#include "FuzzedConsole.h"
#include "schedule/SkedWindow.h"
#include "support/PictureGraphics.h"

#include <fstream>
#include <string>
#include <vector>

namespace larkspool::fuzz {
namespace {

constexpr double MostTime = 130; // seconds in one run; they cost the runner real ones

class Session {
  public:
    explicit Session(Input bytes) : input(bytes) {
        program.Start();
        program.Console().CheckBoxUpdateWaterfall.SetValue(true);
        program.PressConnect();
        AcceptLinks();
    }

    void Run() {
        while (!input.Empty()) {
            const auto act = static_cast<char>(input.Byte());
            ReceiverActs(act);
            NetworkActs(act);
            UserTunes(act);
            UserPresses(act);
            program.desktop.Advance(0);
            program.CheckBounds();
        }
        CloseSchedules();
        program.CheckThatAGoodReceiverIsHeard();
        program.QuitAndCheckFiles();
    }

  private:
    Window1& Console() { return program.Console(); }
    VirtualTCPSocket& Audio() { return program.Audio().socket; }
    VirtualTCPSocket& Waterfall() { return program.Waterfall().socket; }

    void AcceptLinks() {
        Audio().Accept();
        Waterfall().Accept();
        program.desktop.Advance(0);
    }

    void UpgradeInPieces(std::size_t size) {
        const std::string_view reply = "HTTP/1.1 101 Switching Protocols\r\n\r\n";
        for (std::size_t at = 0; at < reply.size(); at += size + 1) {
            Audio().Deliver(reply.substr(at, size + 1));
            program.desktop.Advance(0);
        }
    }

    // The next piece, over and over up to so many times 64 bytes.
    std::string LongPiece() {
        const std::size_t length = input.Byte() * std::size_t{64};
        const std::string_view piece = input.CountedPiece();
        std::string bytes(piece);
        while (!piece.empty() && bytes.size() < length) {
            bytes += piece;
        }
        return bytes;
    }

    void ReceiverActs(char act) {
        switch (act) {
        case 'A': // bytes on a link
            Audio().Deliver(input.CountedPiece());
            break;
        case 'W':
            Waterfall().Deliver(input.CountedPiece());
            break;
        case 'b': // the same bytes over and over
            Audio().Deliver(LongPiece());
            break;
        case 'a': // a frame on a link
            Audio().Deliver(ServerFrame(input.CountedPiece()));
            break;
        case 'w':
            Waterfall().Deliver(ServerFrame(input.CountedPiece()));
            break;
        case 'l': // a long frame
            Audio().Deliver(ServerFrame(LongPiece()));
            break;
        case 'L':
            Waterfall().Deliver(ServerFrame(LongPiece()));
            break;
        case 'u': // both links speak WebSocket
            program.Audio().Upgrade();
            program.Waterfall().Upgrade();
            break;
        case 'v': // the same, in pieces
            UpgradeInPieces(input.Byte());
            break;
        default:
            break;
        }
    }

    void NetworkActs(char act) {
        switch (act) {
        case 'c':
            AcceptLinks();
            break;
        case 'x': // a link goes
            Audio().Fail();
            break;
        case 'y':
            Waterfall().Fail();
            break;
        case 'X':
            Audio().Fail(input.Byte());
            break;
        case 'p': // a datagram of remote control
            program.desktop.udpSockets.at(0)->Deliver(std::string(input.CountedPiece()));
            break;
        case 'h': // the page that was asked for last: the directory's, or the version server's
            AnswerWebRequest(LongPiece());
            break;
        case 't': // time passes, in tenths of seconds
            Pass(input.Byte() / 10.0);
            break;
        case 'T': // a minute, so that a reconnect comes
            Pass(61);
            break;
        case 'S': // half a minute, so that a silent link is given up
            Pass(31);
            break;
        case 'j': // somebody sets the clock
            SetClock(input.Byte() - 128);
            break;
        default:
            break;
        }
    }

    void AnswerWebRequest(const std::string& page) {
        const auto& open = *program.desktop.httpSockets;
        if (!open.empty() && !open.back()->url.empty()) {
            open.back()->Deliver(page);
        }
    }

    void Pass(double seconds) {
        if (passed + seconds <= MostTime) {
            passed += seconds;
            program.desktop.Advance(seconds);
        }
    }

    // By hours at first, then by more and more, up to two centuries.
    void SetClock(double step) {
        program.desktop.queue.SetNow(program.desktop.UtcNow() + step * step * step * 3600.0);
    }

    void UserTunes(char act) {
        switch (act) {
        case 'f':
            Console().TextFieldFreq.SetText(std::string(input.CountedPiece()));
            break;
        case 'q':
            Console().TextFieldFreq.Wheel(0, (input.Byte() - 128) * 120);
            break;
        case 'e':
            Console().TextFieldLowCut.SetText(std::string(input.CountedPiece()));
            break;
        case 'm':
            Console().PopupMenuMode.Pick(input.Byte());
            break;
        case 's':
            Console().SliderSquelch.SetValue(input.Byte());
            break;
        case 'g':
            Console().SliderWaterfallGain.SetValue(input.Byte() * 2);
            break;
        case 'k': // a click on the waterfall
            Console().WaterfallCanvas.mouseDown(input.Byte() * 4, 20);
            break;
        case 'i': // how long a silence in a recording is
            Console().TextFieldSquelchedDeadSpace.SetText(std::string(input.CountedPiece()));
            break;
        default:
            break;
        }
    }

    void UserPresses(char act) {
        switch (act) {
        case 'C':
            Console().PushButtonConnect.Push();
            break;
        case 'D':
            Console().PushButtonDisconnect.Push();
            break;
        case 'r':
            Console().PushButtonRecord.Push();
            break;
        case 'R':
            Toggle(Console().CheckBoxReconnect);
            break;
        case 'N':
            Toggle(Console().CheckBoxNetwork);
            break;
        case 'z':
            Toggle(Console().CheckBoxUpdateWaterfall);
            break;
        case 'K':
            Console().PopupMenuKiwiList.Pick(input.Byte());
            break;
        case 'o':
            OpenSchedule(input.CountedPiece());
            break;
        case 'P':
            Paint();
            break;
        default:
            break;
        }
    }

    // A schedule from a file, which begins to run at once.
    void OpenSchedule(std::string_view text) {
        constexpr std::size_t MostWindows = 4;
        if (program.desktop.windows.size() > MostWindows) {
            return;
        }
        const FolderItem file = *program.desktop.Folder(SpecialFolder::Program).Child("schedule");
        std::ofstream(file.Path(), std::ios::binary) << text;
        program.desktop.chosenFiles.emplace_back(file);
        program.desktop.applicationHandlers.Perform("FileOpenSchedule");
        program.desktop.Advance(0);
        auto& window = dynamic_cast<SkedWindow&>(*program.desktop.windows.back());
        std::vector<MenuItem> items;
        window.ListboxSkeds.constructContextualMenu(items);
        window.ListboxSkeds.contextualMenuAction(items.front()); // "Enable schedules"
    }

    void CloseSchedules() {
        while (program.desktop.windows.back() != &Console()) {
            program.desktop.windows.back()->Close();
            program.desktop.Advance(0);
        }
    }

    static void Toggle(CheckBox& box) { box.SetValue(!box.Value()); }

    void Paint() {
        PictureGraphics paper(64, 16);
        Console().WaterfallCanvas.Event_Paint(paper);
    }

    Input input;
    FuzzedConsole program;
    double passed = 0; // seconds
};

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool::fuzz;
    Session(Input(data, size)).Run();
    return 0;
}
