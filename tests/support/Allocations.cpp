#include "support/Allocations.h"

#include <cstdlib>
#include <new>

#ifdef __APPLE__
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

namespace {

thread_local larkspool::Allocations counted;

std::int64_t SizeOf(void* memory) {
#ifdef __APPLE__
    return static_cast<std::int64_t>(malloc_size(memory));
#else
    return static_cast<std::int64_t>(malloc_usable_size(memory));
#endif
}

void* Make(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++counted.made;
    counted.bytes += SizeOf(memory);
    return memory;
}

void Free(void* memory) {
    if (memory != nullptr) {
        ++counted.freed;
        counted.bytes -= SizeOf(memory);
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

const larkspool::Allocations& larkspool::Allocations::OfThisThread() { return counted; }
