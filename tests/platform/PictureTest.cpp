#include "platform/Picture.h"
#include "platform/Random.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <utility>

namespace larkspool {
namespace {

constexpr Color Shade(int level) {
    const auto byte = static_cast<std::uint8_t>(level);
    return {byte, static_cast<std::uint8_t>(byte + 1), static_cast<std::uint8_t>(byte + 2)};
}

TEST(Picture, RowsMoveDownAndTheLastFallsOff) {
    for (const int rows : {-1, 0, 1, 2, 3, 4, std::numeric_limits<int>::max()}) {
        Picture picture(3, 4);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 3; ++x)
                picture.SetPixel(x, y, Shade(10 * y + x));
        picture.ScrollDown(rows);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 3; ++x) {
                const int source = rows > 0 && rows < 4 && y >= rows ? y - rows : y;
                EXPECT_EQ(picture.Pixel(x, y), Shade(10 * source + x))
                    << rows << ": " << x << "," << y;
            }
    }
}

TEST(Picture, WritesBeyondItsEdgesAreDropped) {
    Picture picture(2, 2);
    const int outside[][2] = {{2, 0}, {-1, 0}, {-1, 1}, {0, 2}, {0, -1}, {1024, 0}};
    for (const auto& place : outside) {
        picture.SetPixel(place[0], place[1], Shade(9));
        EXPECT_EQ(picture.Pixel(place[0], place[1]), Color{});
    }
    for (const std::uint32_t pixel : picture.Pixels())
        EXPECT_EQ(pixel, 0xff000000U);
    picture.SetPixel(1, 1, {0x12, 0x34, 0x56});
    EXPECT_EQ(picture.Row(1)[1], 0xff123456U);
    EXPECT_TRUE(picture.Row(2).empty());
    EXPECT_TRUE(picture.Row(-1).empty());
}

TEST(Picture, AWindowWithoutRoomHasAnEmptyPicture) {
    for (const auto& size :
         {std::pair{0, 5}, std::pair{5, 0}, std::pair{-3, 5}, std::pair{5, -3}}) {
        Picture picture(size.first, size.second);
        picture.SetPixel(0, 0, Shade(1));
        picture.ScrollDown(1);
        EXPECT_TRUE(picture.Pixels().empty());
    }
}

TEST(Random, BothEndsOfARangeAreDrawnAndNothingElse) {
    Random random(7);
    std::set<std::int64_t> drawn;
    std::set<int> bytes;
    for (int i = 0; i < 5000; ++i) {
        drawn.insert(random.InRange(-1, 2));
        bytes.insert(random.Byte());
    }
    EXPECT_EQ(drawn, (std::set<std::int64_t>{-1, 0, 1, 2}));
    EXPECT_EQ(bytes.size(), 256U);
    EXPECT_EQ(random.InRange(0, -1), 0);
    EXPECT_EQ(Random(42).InRange(0, 1000000), Random(42).InRange(0, 1000000));
}

} // namespace
} // namespace larkspool
