#include "platform/MemoryBlock.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspool {
namespace {

TEST(MemoryBlock, NumbersLieInTheOrderThatWasAskedFor) {
    MemoryBlock block(12);
    block.SetUInt16(0, 0x0102, ByteOrder::BigEndian);
    block.SetUInt16(2, 0x0102, ByteOrder::LittleEndian);
    block.SetInt16(4, -2, ByteOrder::LittleEndian);
    block.SetUInt32(6, 0x01020304, ByteOrder::BigEndian);
    block.SetUInt8(10, 0xFF);
    EXPECT_EQ(block, MemoryBlock(std::string_view("\1\2\2\1\xFE\xFF\1\2\3\4\xFF\0", 12)));
    EXPECT_EQ(block.Int16(4, ByteOrder::LittleEndian), -2);
    EXPECT_EQ(block.Int16(4, ByteOrder::BigEndian), -257);
    EXPECT_EQ(block.UInt32(6, ByteOrder::LittleEndian), 0x04030201U);
    block.SetInt32(8, -5, ByteOrder::LittleEndian);
    EXPECT_EQ(block.Int32(8, ByteOrder::LittleEndian), -5);
}

TEST(MemoryBlock, NothingOutsideIsReadOrWritten) {
    constexpr std::size_t wrapped = static_cast<std::size_t>(-1);
    MemoryBlock block(std::string_view("\xFF\xFF\xFF"));
    const MemoryBlock before = block;
    for (const std::size_t offset :
         {std::size_t{2}, std::size_t{3}, std::size_t{4}, wrapped - 2, wrapped}) {
        EXPECT_EQ(block.UInt16(offset, ByteOrder::BigEndian), 0);
        EXPECT_EQ(block.Int32(offset, ByteOrder::BigEndian), 0);
        block.SetUInt16(offset, 0, ByteOrder::BigEndian);
        block.SetInt32(offset, 0, ByteOrder::BigEndian);
        EXPECT_EQ(block, before);
    }
    EXPECT_EQ(block.UInt8(2), 0xFF);
    EXPECT_EQ(block.UInt8(3), 0);
    EXPECT_EQ(block.UInt32(0, ByteOrder::BigEndian), 0U);
    EXPECT_EQ(MemoryBlock().UInt8(0), 0);
}

TEST(MemoryBlock, TextEndsAtNulOrAtTheEnd) {
    const MemoryBlock block(std::string_view("freq:7100\0rest", 14));
    EXPECT_EQ(block.CString(0), "freq:7100");
    EXPECT_EQ(block.CString(10), "rest");
    EXPECT_EQ(block.CString(9), "");
    EXPECT_EQ(block.CString(99), "");
    EXPECT_EQ(block.View(5, 4), "7100");
    EXPECT_EQ(block.View(10, 100), "rest");
    EXPECT_EQ(block.View(100, 100), "");
}

} // namespace
} // namespace larkspool
