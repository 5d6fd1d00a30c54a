#include "soak/Memory.h"

#include <cstdlib>
#include <fstream>
#include <new>

#include <malloc.h>
#include <unistd.h>

namespace {

std::int64_t pieces = 0;
std::int64_t bytes = 0;

void* Make(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++pieces;
    bytes += static_cast<std::int64_t>(malloc_usable_size(memory));
    return memory;
}

void Free(void* memory) {
    if (memory != nullptr) {
        --pieces;
        bytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
        std::free(memory);
    }
}

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) { return Make(size); }
void* operator new[](std::size_t size) { return Make(size); }
[[gnu::noinline]] void operator delete(void* memory) noexcept { Free(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { Free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }

namespace larkspool::soak {

Memory MemoryNow() {
    Memory now = {pieces, bytes, 0, 0};
#ifdef __GLIBC__
    const auto heap = mallinfo2();
    now.allocated = static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
#endif
    std::int64_t size = 0;
    std::int64_t resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    now.resident = resident * sysconf(_SC_PAGESIZE);
    return now;
}

} // namespace larkspool::soak
