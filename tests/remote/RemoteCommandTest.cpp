#include "remote/RemoteCommand.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace larkspool {
namespace {

using Verb = RemoteVerb;

std::optional<RemoteCommand> Parse(const std::string& datagram) {
    return ParseRemoteCommand(RemoteLine(datagram));
}

TEST(RemoteCommand, EachWordIsUnderstoodWithItsArgument) {
    const std::pair<std::string, std::optional<RemoteCommand>> cases[] = {
        {"vrxct:whatever", {{Verb::TellReceivers}}},
        {"staud: 1.9", {{Verb::StartStreaming}}},
        {"staud:2", {{Verb::EndStreaming}}},
        {"staud:" + std::string(99, ' ') + "1", {{Verb::StartStreaming}}},
        {"staud:" + std::string(100, ' ') + "1", {{Verb::EndStreaming}}}, // no more is looked at
        {"ofreq:7055123.5", {{Verb::SetFrequency, "7055.1235"}}},
        {"ofreq:loud", {{Verb::SetFrequency, "0"}}},
        {"togglerecord", {{Verb::ToggleRecording}}},
        {"connectme", {{Verb::Connect}}},
        {"disconnect", {{Verb::Disconnect}}},
        {"address:sdr.example.net", {{Verb::SetAddress, "sdr.example.net"}}},
        {"highcut:2700", {{Verb::SetHighCut, "2700"}}},
        {std::string("lowcut:-2700\0", 13), {{Verb::SetLowCut, std::string("-2700\0", 6)}}},
        {"mode:7.99", {{Verb::SelectMode, "", 6}}},
        {"mode:usb", {{Verb::SelectMode, "", 0}}},
        {"mode:-0.9", {{Verb::SelectMode, "", 0}}},
    };
    for (const auto& [datagram, expected] : cases) {
        EXPECT_EQ(Parse(datagram), expected) << datagram;
    }
    const int rows[] = {0, 9, 6, 3, 2, 4, 4}; // the peers number the modes in their own way
    for (std::size_t code = 0; code < std::size(rows); ++code) {
        EXPECT_EQ(Parse("mode:" + std::to_string(code))->row, rows[code]) << code;
    }
    for (const char* line : {"", "c", "CONNECT", " connect", "vrxct", "mode", "5ofreq:1000",
                             "123connect", "reconnect", "mode:8", "mode:-1", "mode:1e300"}) {
        EXPECT_EQ(Parse(line), std::nullopt) << line;
    }
}

TEST(RemoteCommand, ThePrefixAndOneLineEndAreTakenOff) {
    const std::pair<std::string, std::string> cases[] = {
        {"07ofreq:14074000\r\n", "ofreq:14074000"},
        {"99", ""},
        {"1", "1"},
        {"1connect", "1connect"},
        {"connect\n\n\r\r", "connect\n\r"},
        {"con\nnect\r", "connect"},
        {"07\n5x", "5x"},
        {"00" + std::string(150, 'a'), std::string(100, 'a')},
        {std::string(150, 'a'), std::string(150, 'a')},
        {"00" + std::string(99, 'a') + "\r\nb", std::string(99, 'a')},
    };
    for (const auto& [datagram, line] : cases) {
        EXPECT_EQ(RemoteLine(datagram), line) << datagram;
    }
}

} // namespace
} // namespace larkspool
