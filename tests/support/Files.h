#pragma once

#include "platform/FolderItem.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace larkspool {

// Files as a test sees them: whole, and past everything that the program knows of files.
inline std::string ContentOf(const FolderItem& item) {
    std::ifstream file(item.Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void Put(const FolderItem& item, std::string_view bytes) {
    std::ofstream(item.Path(), std::ios::binary) << bytes;
}

inline std::uint32_t LittleEndianAt(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value |= std::uint32_t{static_cast<std::uint8_t>(bytes.at(at + i))} << 8U * i;
    }
    return value;
}

} // namespace larkspool
