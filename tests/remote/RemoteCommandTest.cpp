#include "remote/RemoteCommand.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace larkspool {
namespace {

using Verb = RemoteVerb;

struct Case {
    std::string datagram;
    std::optional<RemoteCommand> expected;
};

std::optional<RemoteCommand> Parse(const std::string& datagram) {
    return ParseRemoteCommand(RemoteLine(datagram));
}

void Check(const std::vector<Case>& cases) {
    for (const auto& [datagram, expected] : cases) {
        EXPECT_EQ(Parse(datagram), expected) << datagram;
    }
}

RemoteCommand Row(int row) { return {Verb::SelectMode, "", row}; }

TEST(RemoteCommand, EachWordIsUnderstoodWithItsArgument) {
    Check({{"vrxct:", {{Verb::TellReceivers}}},
           {"vrxct:whatever", {{Verb::TellReceivers}}},
           {"staud:1", {{Verb::StartStreaming}}},
           {"staud: 1.9", {{Verb::StartStreaming}}},
           {"staud:0", {{Verb::EndStreaming}}},
           {"staud:2", {{Verb::EndStreaming}}},
           {"staud:", {{Verb::EndStreaming}}},
           {"ofreq:14074000", {{Verb::SetFrequency, "14074"}}},
           {"ofreq:7055123.5", {{Verb::SetFrequency, "7055.1235"}}},
           {"ofreq:loud", {{Verb::SetFrequency, "0"}}},
           {"togglerecord", {{Verb::ToggleRecording}}},
           {"connect", {{Verb::Connect}}},
           {"connectme", {{Verb::Connect}}},
           {"disconnect", {{Verb::Disconnect}}},
           {"address:sdr.example.net", {{Verb::SetAddress, "sdr.example.net"}}},
           {"address:", {{Verb::SetAddress, ""}}},
           {"highcut:2700", {{Verb::SetHighCut, "2700"}}},
           {std::string("lowcut:-2700\0", 13), {{Verb::SetLowCut, std::string("-2700\0", 6)}}}});
}

TEST(RemoteCommand, WhatIsNoCommandDoesNothing) {
    for (const char* line : {"", "c", "CONNECT", " connect", "vrxct", "mode", "5ofreq:1000",
                             "123connect", "reconnect", "SET mute=1"}) {
        EXPECT_EQ(Parse(line), std::nullopt) << line;
    }
}

TEST(RemoteCommand, ModesAreNumberedInThePeersWay) {
    Check({{"mode:0", Row(0)},
           {"mode:1", Row(9)},
           {"mode:2", Row(6)},
           {"mode:3", Row(3)},
           {"mode:4", Row(2)},
           {"mode:5", Row(4)},
           {"mode:6", Row(4)},
           {"mode:7.99", Row(6)},
           {"mode:usb", Row(0)},
           {"mode:-0.9", Row(0)},
           {"mode:8", std::nullopt},
           {"mode:-1", std::nullopt},
           {"mode:1e300", std::nullopt}});
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

TEST(RemoteCommand, ANumberEndsAfterAHundredCharacters) {
    EXPECT_EQ(Parse("staud:" + std::string(99, ' ') + "1"), (RemoteCommand{Verb::StartStreaming}));
    EXPECT_EQ(Parse("staud:" + std::string(100, ' ') + "1"), (RemoteCommand{Verb::EndStreaming}));
}

} // namespace
} // namespace larkspool
