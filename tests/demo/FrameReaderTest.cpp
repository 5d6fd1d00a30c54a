#include "demo/Listening.h"

#include <gtest/gtest.h>

#include <string>

namespace larkspool::demo {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(FrameReader, FramesInPiecesOfAnySizeAreDeliveredOnce) {
    const std::string longText(300, 'x');
    Bytes stream{0x82, 0x7F, 0, 0, 0, 0, 0, 0, 0, 3, 'f', 'a', 'r'};
    for (const Bytes& frame :
         {ClientFrame("SET keepalive"), ClientFrame(longText), ClientFrame("SET mod", 0x01),
          ClientFrame("still there?", 0x89), ClientFrame("=am", 0x80), ClientFrame("")}) {
        stream.insert(stream.end(), frame.begin(), frame.end());
    }
    const std::vector<std::string> wanted{"far",          "SET keepalive", longText,
                                          "still there?", "SET mod=am",    ""};
    for (const std::size_t pieceSize : {1U, 2U, 3U, 7U, 50U, 1000U}) {
        FrameReader reader;
        std::vector<std::string> payloads;
        for (std::size_t at = 0; at < stream.size(); at += pieceSize) {
            reader.Add(std::span(stream).subspan(at, std::min(pieceSize, stream.size() - at)));
            while (const auto message = reader.Next()) {
                payloads.push_back(message->payload);
            }
        }
        EXPECT_EQ(payloads, wanted) << pieceSize;
    }
}

TEST(FrameReader, WhatNoClientSendsEndsTheLinkInsteadOfFillingMemory) {
    const Bytes tooLong{0x82, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3, 4};
    const Bytes start = ClientFrame(std::string(10'000, 'x'), 0x02);
    const Bytes more = ClientFrame(std::string(10'000, 'x'), 0x00);
    const std::pair<const char*, std::vector<Bytes>> cases[] = {
        {"an absurd length", {tooLong}},
        {"an end without a beginning", {ClientFrame("tail", 0x80)}},
        {"a message without end", {start, more}},
    };
    for (const auto& [what, frames] : cases) {
        FrameReader reader;
        for (const Bytes& frame : frames) {
            reader.Add(frame);
            EXPECT_FALSE(reader.Next()) << what;
        }
        EXPECT_TRUE(reader.HasFailed()) << what;
    }
}

} // namespace
} // namespace larkspool::demo
