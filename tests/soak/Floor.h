#pragma once

#include <cstdint>

namespace larkspool::soak {

// The floor beside the session: as many hours of undisturbed sound and waterfall, made in the same
// way and cut into frames by the link's reader alone. Gives the number of frames.
std::int64_t ReadBare(double hours);

} // namespace larkspool::soak
