#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// Rig control has its own names for the modes, and describes a passband by its width. Rows are
// those of ModeSettingsClass::Captions.

// Empty if no receiver has the mode.
std::optional<int> RigModeRow(std::string_view name);
// A narrow mode has the name of the wide one; one sideband of synchronous AM has the name of both.
std::string_view RigModeName(int row);

struct RigPassband {
    double low = 0; // Hz from the tuned frequency
    double high = 0;
};

constexpr double WidestPassband = 1e6; // Hz

// A passband of the given width in Hz: at the same distance from the carrier in the sideband modes,
// around the same tone in the CW modes, around the carrier in the others. Its edges are whole
// numbers.
RigPassband RigEdges(int row, const RigPassband& now, double width);

// In whole Hz.
std::string RigWidthText(const RigPassband& passband);

} // namespace larkspool
