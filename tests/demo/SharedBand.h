#pragma once

#include "demo/Band.h"
#include "demo/Moment.h"

namespace larkspool::demo {

// One band for all tests of a program: its programmes take a while to render.
inline const Band& SharedBand() {
    static const Band band(1);
    return band;
}

// Half a minute past a full minute, so that no long pip is near.
constexpr Moment someTime{1'700'000'010, 0.25};

} // namespace larkspool::demo
