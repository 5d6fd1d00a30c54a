#include "waterfall/ColorTable.h"

#include <gtest/gtest.h>

#include <ostream>

namespace larkspool {

void PrintTo(const Color& color, std::ostream* out) {
    *out << int{color.red} << ' ' << int{color.green} << ' ' << int{color.blue};
}

namespace {

TEST(ColorTable, TheBandsMeetWhereTheyShould) {
    // Worked out by hand at both edges of every band; what overruns is cut at 255.
    const std::pair<int, Color> cases[] = {
        {0, {0, 0, 0}},       {1, {0, 0, 1}},       {171, {0, 0, 253}},    {172, {0, 0, 255}},
        {173, {0, 1, 255}},   {347, {0, 255, 255}}, {348, {0, 255, 255}},  {349, {0, 255, 253}},
        {479, {0, 255, 0}},   {480, {0, 255, 0}},   {481, {1, 255, 0}},    {615, {255, 255, 0}},
        {616, {255, 255, 0}}, {617, {255, 253, 0}}, {867, {255, 0, 0}},    {868, {255, 0, 0}},
        {869, {255, 0, 0}},   {946, {255, 0, 65}},  {1020, {255, 0, 128}}, {1023, {255, 0, 130}}};
    const ColorTable table;
    for (const auto& [index, color] : cases) {
        EXPECT_EQ(table[index], color) << index;
    }
}

TEST(LevelColors, GainStretchesAndOffsetMovesTheBlackPoint) {
    const ColorTable table;
    LevelColors levels;
    struct Case {
        double gain;
        int offset;
        std::uint8_t value;
        int level;
    };
    const Case cases[] = {{1.00, 0, 0, 0},      {1.00, 0, 200, 200}, {1.00, 0, 255, 255},
                          {1.00, 63, 62, 0},    {1.00, 63, 64, 1},   {2.22, 0, 100, 222},
                          {2.22, 10, 100, 199}, {5.00, 0, 51, 255},  {5.00, 0, 52, 255},
                          {0.00, 0, 255, 0},    {0.01, 0, 199, 1},   {0.5, 0, 1, 0}};
    for (const Case& one : cases) {
        levels.Update(table, one.gain, one.offset);
        EXPECT_EQ(levels[one.value], table[one.level * 4].Packed())
            << one.gain << ' ' << one.offset << ' ' << int{one.value};
    }
}

} // namespace
} // namespace larkspool
