#pragma once

#include <cstdint>

namespace larkspool {

// What a thread has asked of `new`, in a program that Allocations.cpp is linked into.
struct Allocations {
    std::int64_t made = 0;
    std::int64_t bytes = 0; // in what is made and not yet deleted

    static const Allocations& OfThisThread();
};

} // namespace larkspool
