#include "platform/MemoryBlock.h"

#include <algorithm>

namespace larkspool {

std::string_view MemoryBlock::View(std::size_t offset, std::size_t count) const {
    const std::size_t first = std::min(offset, bytes.size());
    const std::size_t length = std::min(count, bytes.size() - first);
    return {reinterpret_cast<const char*>(bytes.data()) + first, length};
}

std::string MemoryBlock::CString(std::size_t offset) const {
    const std::string_view rest = View(offset, bytes.size());
    return std::string(rest.substr(0, rest.find('\0')));
}

} // namespace larkspool
