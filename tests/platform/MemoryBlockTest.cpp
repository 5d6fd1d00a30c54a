#include "platform/MemoryBlock.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspool {
namespace {

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
