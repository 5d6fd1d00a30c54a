#pragma once

#include "demo/StationTable.h"

#include <vector>

namespace larkspool::demo {

// Adds the stations without a name: each band has slots of equal width, and a slot's frequency
// alone decides whether a station is in it and which. Slots near an existing station stay empty.
void AddPlannedStations(std::vector<Station>& stations);

} // namespace larkspool::demo
