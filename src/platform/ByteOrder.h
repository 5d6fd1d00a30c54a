#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>

namespace larkspool {

enum class ByteOrder { LittleEndian, BigEndian };

constexpr ByteOrder NativeByteOrder =
    std::endian::native == std::endian::big ? ByteOrder::BigEndian : ByteOrder::LittleEndian;

template <std::unsigned_integral T>
constexpr T LoadNumber(std::span<const std::uint8_t, sizeof(T)> bytes, ByteOrder order) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        const std::size_t place = order == ByteOrder::LittleEndian ? i : sizeof(T) - 1 - i;
        value |= std::uint64_t{bytes[i]} << (8 * place);
    }
    return static_cast<T>(value);
}

template <std::unsigned_integral T>
constexpr void StoreNumber(std::span<std::uint8_t, sizeof(T)> bytes, T value, ByteOrder order) {
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        const std::size_t place = order == ByteOrder::LittleEndian ? i : sizeof(T) - 1 - i;
        bytes[i] = static_cast<std::uint8_t>(std::uint64_t{value} >> (8 * place));
    }
}

} // namespace larkspool
