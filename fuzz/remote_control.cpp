// Any lines as the datagrams of remote control and as the lines of rig control, with the console
// behind them: it shows what it was last told, answers in the form that peers read, and its user
// can go on.
#include "FuzzedConsole.h"
#include "platform/Text.h"
#include "remote/RemoteCommand.h"

#include <optional>

namespace larkspool::fuzz {
namespace {

void CheckShown(Window1& console, const RemoteCommand& command) {
    switch (command.verb) {
    case RemoteVerb::SetFrequency:
        Require(console.TextFieldFreq.Text() == command.text, "the frequency shows");
        break;
    case RemoteVerb::SelectMode:
        Require(console.PopupMenuMode.ListIndex() == command.row, "the mode shows");
        break;
    case RemoteVerb::SetHighCut:
        Require(console.TextFieldHighCut.Text() == command.text, "the upper edge shows");
        break;
    case RemoteVerb::SetLowCut:
        Require(console.TextFieldLowCut.Text() == command.text, "the lower edge shows");
        break;
    default:
        break;
    }
}

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    fuzz::FuzzedConsole program;
    program.Start();
    program.Console().CheckBoxNetwork.SetValue(true);
    const auto rig = program.desktop.tcpServers.at(0)->Connect();
    fuzz::Input input(data, size);
    std::string_view rest = input.Rest();
    while (!rest.empty()) {
        const std::string datagram(rest.substr(0, rest.find('\n')));
        rest.remove_prefix(std::min(rest.size(), datagram.size() + 1));
        program.desktop.udpSockets.at(0)->Deliver(datagram);
        program.desktop.Advance(0);
        if (const auto command = ParseRemoteCommand(RemoteLine(datagram))) {
            fuzz::CheckShown(program.Console(), *command);
        }
        rig->Send(datagram + "\n");
        program.Audio().socket.Accept();
        program.Waterfall().socket.Accept();
        program.desktop.Advance(0.5);
        program.CheckBounds();
        const std::string answer = rig->TakeReceived();
        fuzz::Require(answer.empty() || answer.ends_with('\n'), "peers can read the answer");
    }
    program.CheckThatAGoodReceiverIsHeard();
    program.QuitAndCheckFiles();
    return 0;
}
