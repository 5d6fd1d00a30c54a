#pragma once

#include "link/WebsocketsClass.h"
#include "support/VirtualDesktop.h"
#include "support/VirtualReceiver.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace larkspool {

// One link on a connected socket, with the test at the other end.
class LinkFixture : public ::testing::Test {
  protected:
    LinkFixture() {
        socket.Connect();
        socket.Accept();
        link.Init(socket);
    }

    using Frame = std::pair<std::string, std::string>; // tag, body

    // Feeds bytes and takes every frame that is whole.
    std::vector<Frame> Feed(std::string_view bytes) {
        socket.Deliver(bytes);
        std::vector<Frame> frames;
        std::string tag;
        std::string body;
        do {
            while (link.WebsocketRead(tag, body)) {
                if (!tag.empty()) {
                    frames.emplace_back(tag, body);
                }
            }
        } while (link.ReadNewData() > 0);
        return frames;
    }

    VirtualDesktop desktop;
    Random random{1};
    VirtualTCPSocket socket{desktop.queue};
    WebsocketsClass link{desktop, random};
};

} // namespace larkspool
