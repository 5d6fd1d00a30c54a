#include "soak/Memory.h"

#include "support/Allocations.h"

#include <fstream>

#include <malloc.h>
#include <unistd.h>

namespace larkspool::soak {

Memory MemoryNow() {
    const Allocations& counted = Allocations::OfThisThread();
    Memory now = {counted.made - counted.freed, counted.bytes, 0, 0};
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
