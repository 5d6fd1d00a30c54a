#include "demo/WebSocketFrame.h"

#include <gtest/gtest.h>

namespace larkspool::demo {
namespace {

using Bytes = std::vector<std::uint8_t>;

// A frame as a client sends it, masked, with a length field of the least or a wanted size.
Bytes Masked(std::uint8_t first, const std::string& payload, std::size_t lengthBytes = 0) {
    const Bytes key{0x37, 0xFA, 0x21, 0x3D};
    Bytes frame{first};
    if (lengthBytes == 0 && payload.size() > 125) {
        lengthBytes = 2;
    }
    const std::uint8_t small[] = {static_cast<std::uint8_t>(payload.size()), 126, 127};
    frame.push_back(static_cast<std::uint8_t>(
        0x80 | (lengthBytes == 0 ? small[0] : small[lengthBytes == 2 ? 1 : 2])));
    for (std::size_t i = lengthBytes; i-- > 0;) {
        frame.push_back(static_cast<std::uint8_t>(payload.size() >> (8 * i) & 0xFF));
    }
    frame.insert(frame.end(), key.begin(), key.end());
    for (std::size_t i = 0; i < payload.size(); ++i) {
        frame.push_back(
            static_cast<std::uint8_t>(static_cast<std::uint8_t>(payload[i]) ^ key[i % 4]));
    }
    return frame;
}

std::vector<std::string> ReadInPieces(const Bytes& stream, std::size_t pieceSize) {
    FrameReader reader;
    std::vector<std::string> payloads;
    for (std::size_t at = 0; at < stream.size(); at += pieceSize) {
        reader.Add(std::span(stream).subspan(at, std::min(pieceSize, stream.size() - at)));
        while (const auto message = reader.Next()) {
            payloads.push_back(message->payload);
        }
    }
    return payloads;
}

TEST(FrameReader, FramesInPiecesOfAnySizeAreDeliveredOnce) {
    const std::string longText(300, 'x');
    Bytes stream;
    for (const Bytes& frame : {Masked(0x82, "SET keepalive"), Masked(0x81, longText),
                               Masked(0x82, "far", 8), Masked(0x82, "")}) {
        stream.insert(stream.end(), frame.begin(), frame.end());
    }
    const std::vector<std::string> wanted{"SET keepalive", longText, "far", ""};
    for (const std::size_t pieceSize : {1U, 2U, 3U, 7U, 50U, 1000U}) {
        EXPECT_EQ(ReadInPieces(stream, pieceSize), wanted) << pieceSize;
    }
}

TEST(FrameReader, FragmentsBecomeOneMessageWithAPingBetweenThem) {
    FrameReader reader;
    reader.Add(Masked(0x01, "SET mod"));
    reader.Add(Masked(0x89, "still there?"));
    reader.Add(Masked(0x80, "=am"));
    const auto ping = reader.Next();
    ASSERT_TRUE(ping);
    EXPECT_EQ(ping->opcode, Opcode::Ping);
    EXPECT_EQ(ping->payload, "still there?");
    const auto message = reader.Next();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->opcode, Opcode::Text);
    EXPECT_EQ(message->payload, "SET mod=am");
}

TEST(FrameReader, WhatNoClientSendsEndsTheLinkInsteadOfFillingMemory) {
    const Bytes tooLong{0x82, 0xFF, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3, 4};
    const Bytes strayContinuation = Masked(0x80, "tail");
    for (const Bytes& stream : {tooLong, strayContinuation}) {
        FrameReader reader;
        reader.Add(stream);
        EXPECT_FALSE(reader.Next());
        EXPECT_TRUE(reader.HasFailed());
    }
    FrameReader reader;
    const std::string piece(4000, 'x');
    reader.Add(Masked(0x02, piece));
    for (int i = 0; i < 10 && !reader.HasFailed(); ++i) {
        EXPECT_FALSE(reader.Next());
        reader.Add(Masked(0x00, piece));
    }
    EXPECT_TRUE(reader.HasFailed());
}

TEST(FrameReader, LengthsGoOutInTheirShortestForm) {
    for (const auto& [size, header] : {std::pair<std::size_t, Bytes>{125, {0x82, 125}},
                                       {126, {0x82, 126, 0, 126}},
                                       {1034, {0x82, 126, 4, 10}},
                                       {65536, {0x82, 127, 0, 0, 0, 0, 0, 1, 0, 0}}}) {
        const Bytes frame = EncodeFrame(Opcode::Binary, Bytes(size, 7));
        ASSERT_EQ(frame.size(), header.size() + size);
        EXPECT_TRUE(std::equal(header.begin(), header.end(), frame.begin())) << size;
    }
}

} // namespace
} // namespace larkspool::demo
