#pragma once

#include <cstdint>

namespace larkspool::demo {

// A point in UTC, kept in two parts so that a carrier's phase is exact to a fraction of a degree
// for the large numbers of seconds since 1970.
struct Moment {
    std::int64_t second = 0; // since 1970-01-01
    double fraction = 0.0;   // 0 up to, not including, 1

    static Moment Now();

    Moment After(double seconds) const;

    // The phase now of an oscillation with phase 0 in 1970, in turns from 0 to 1.
    double Turns(double hertz) const;

    // Seconds since the last whole multiple of a period.
    double Within(double period) const;
};

} // namespace larkspool::demo
