#include "platform/MemoryBlock.h"
#include "platform/Random.h"

#include <gtest/gtest.h>

namespace larkspool {
namespace {

TEST(MemoryBlock, NothingOutsideIsReadOrWritten) {
    MemoryBlock block(std::string_view("freq:7100\0\xFF\xFF\xFF", 13));
    const MemoryBlock before = block;
    for (const std::size_t offset : {std::size_t{12}, std::size_t{13}, ~std::size_t{0}}) {
        EXPECT_EQ(block.UInt16(offset, ByteOrder::BigEndian), 0);
        EXPECT_EQ(block.UInt32(offset - 1, ByteOrder::BigEndian), 0U);
        block.SetUInt8(offset | 16U, 0);
        EXPECT_EQ(block, before);
    }
    EXPECT_EQ(block.CString(0), "freq:7100");
    EXPECT_EQ(block.CString(10), "\xFF\xFF\xFF") << "a text without its NUL";
    EXPECT_EQ(block.View(9, 100).size(), 4U);
    EXPECT_EQ(block.View(100, 100), "");
}

TEST(Random, AnEmptyRangeGivesItsLowerEnd) { EXPECT_EQ(Random(1).InRange(0, -1), 0); }

} // namespace
} // namespace larkspool
