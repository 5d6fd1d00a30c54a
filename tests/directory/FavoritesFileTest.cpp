#include "directory/FavoritesFile.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <random>

namespace larkspool {
namespace {

ReceiverList Decode(const std::string& text) {
    auto stream = TextInputStream::FromText(text);
    return DecodeFavorites(stream);
}

TEST(FavoritesFile, EachGoodLineIsAReceiver) {
    const ReceiverList list = Decode("192.0.2.10;8073;Shed antenna\r\n"
                                     "two;parts\n"
                                     "four;1;parts;here\n"
                                     "\n"
                                     "lark.example;abc;Grüße\r"
                                     ";;\n"
                                     "192.0.2.11;8074.9;Roof dipole"); // no line end
    EXPECT_EQ(list.urls,
              (std::vector<std::string>{"192.0.2.10", "lark.example", "", "192.0.2.11"}));
    EXPECT_EQ(list.ports, (std::vector<std::int64_t>{8073, 0, 0, 8074}));
    EXPECT_EQ(list.names, (std::vector<std::string>{"Shed antenna", "Grüße", "", "Roof dipole"}));
    EXPECT_EQ(Decode("").Count(), 0U);
}

TEST(FavoritesFile, CellsAreWrittenAsTheyStand) {
    EXPECT_EQ(EncodeFavorites({}), "");
    EXPECT_EQ(EncodeFavorites({{"Kiwi URL", "abc", "a;b"}, {"", "", "\xFF"}}),
              "Kiwi URL;abc;a;b\n;;\xFF\n");
    EXPECT_EQ(EncodeFavorites({{"host", "1", "one\nevil.example;1;two\r\nthree"}}),
              "host;1;one evil.example;1;two  three\n")
        << "a pasted line end makes no second receiver";
}

// Anything that can be typed without a semicolon comes back, byte for byte.
TEST(FavoritesFile, RowsComeBackAsTheyWere) {
    const std::vector<std::string> pieces = {"a",    "Z9", " ", ".",  ":", "/", "é",       "北",
                                             "\xFF", "\"", "'", "\t", "&", "-", "\xF0\x9F"};
    std::mt19937 engine(11);
    const auto text = [&] {
        std::string result;
        for (auto length = engine() % 40; length > 0; --length) {
            result += pieces[engine() % pieces.size()];
        }
        return result;
    };
    for (int round = 0; round < 200; ++round) {
        ReceiverList expected;
        std::vector<FavoriteCells> rows;
        for (auto count = engine() % 50; count > 0; --count) {
            const std::int64_t port = static_cast<std::int64_t>(engine()) - 10;
            rows.push_back({text(), Str(port), text()});
            expected.Append(rows.back()[2], rows.back()[0], port);
        }
        ASSERT_EQ(Decode(EncodeFavorites(rows)), expected) << "round " << round;
    }
}

} // namespace
} // namespace larkspool
