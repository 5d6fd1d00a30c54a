#include "support/Allocations.h"

#include <cstdlib>
#include <new>

#ifdef __APPLE__
#include <malloc/malloc.h>
constexpr auto UsableSize = malloc_size;
#else
#include <malloc.h>
constexpr auto UsableSize = malloc_usable_size;
#endif

namespace {

thread_local larkspool::Allocations counted;

void* Make(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++counted.made;
    counted.bytes += static_cast<std::int64_t>(UsableSize(memory));
    return memory;
}

void Free(void* memory) {
    if (memory != nullptr) {
        counted.bytes -= static_cast<std::int64_t>(UsableSize(memory));
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
