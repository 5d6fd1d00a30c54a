#pragma once

#include <cstdint>

namespace larkspool::soak {

// What the program holds at a moment.
struct Memory {
    std::int64_t pieces = 0;    // made by new and not yet deleted
    std::int64_t bytes = 0;     // in them
    std::int64_t allocated = 0; // bytes, by the allocator's own statistics; 0 where it keeps none
    std::int64_t resident = 0;  // bytes, by the kernel
};

Memory MemoryNow();

} // namespace larkspool::soak
