#include "directory/FavoritesFile.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

FavoriteLines DecodeLines(const std::string& text) {
    auto stream = TextInputStream::FromText(text);
    return DecodeFavorites(stream);
}

ReceiverList Decode(const std::string& text) { return DecodeLines(text).receivers; }

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

TEST(FavoritesFile, RowsComeBackAsTheyWere) {
    const std::string bytes = "Z9 .:/\"'\t&-\xFF\xF0\x9F é北";
    EXPECT_EQ(EncodeFavorites({}, {}), "");
    EXPECT_EQ(EncodeFavorites({{bytes, "-10", "a"}, {"", "abc", bytes}}, {}),
              bytes + ";-10;a\n;abc;" + bytes + "\n");
    ReceiverList expected;
    expected.Append("a", bytes, -10);
    expected.Append(bytes, "", 0);
    EXPECT_EQ(Decode(bytes + ";-10;a\n;abc;" + bytes + "\n"), expected);
    EXPECT_EQ(EncodeFavorites({{"host", "1", "one\nevil.example;1;two\r\nthree"}}, {}),
              "host;1;one evil.example;1;two  three\n")
        << "a pasted line end makes no second receiver";
}

} // namespace
} // namespace larkspool
