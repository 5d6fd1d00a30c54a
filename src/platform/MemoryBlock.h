#pragma once

#include "platform/ByteOrder.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

// Owned bytes with typed access. A read that is not wholly inside the block gives
// 0, such a write is ignored. Offsets are in bytes.
class MemoryBlock {
  public:
    MemoryBlock() = default;
    explicit MemoryBlock(std::size_t size) : bytes(size) {}
    explicit MemoryBlock(std::string_view text) : bytes(text.begin(), text.end()) {}

    std::size_t Size() const { return bytes.size(); }
    std::span<std::uint8_t> Bytes() { return bytes; }
    std::span<const std::uint8_t> Bytes() const { return bytes; }
    std::uint8_t* Data() { return bytes.data(); }
    const std::uint8_t* Data() const { return bytes.data(); }

    // Both are cut at the end of the block.
    std::string_view View(std::size_t offset, std::size_t count) const;
    std::string CString(std::size_t offset) const;

    std::uint16_t UInt16(std::size_t offset, ByteOrder order) const {
        return Load<std::uint16_t>(offset, order);
    }
    std::uint32_t UInt32(std::size_t offset, ByteOrder order) const {
        return Load<std::uint32_t>(offset, order);
    }
    std::int16_t Int16(std::size_t offset, ByteOrder order) const {
        return static_cast<std::int16_t>(UInt16(offset, order));
    }

    void SetUInt8(std::size_t offset, std::uint8_t value) {
        if (Holds(offset, 1)) {
            bytes[offset] = value;
        }
    }

    friend bool operator==(const MemoryBlock&, const MemoryBlock&) = default;

  private:
    bool Holds(std::size_t offset, std::size_t count) const {
        return offset <= bytes.size() && bytes.size() - offset >= count;
    }

    template <std::unsigned_integral T>
    T Load(std::size_t offset, ByteOrder order) const {
        if (!Holds(offset, sizeof(T))) {
            return 0;
        }
        return LoadNumber<T>(std::span<const std::uint8_t, sizeof(T)>(&bytes[offset], sizeof(T)),
                             order);
    }

    std::vector<std::uint8_t> bytes;
};

} // namespace larkspool
