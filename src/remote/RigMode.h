#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// Rig control has names of its own for the modes, and gives a passband by its width. Rows are those
// of ModeSettingsClass::Captions.

// Empty for a mode that no receiver has.
std::optional<int> RigModeRow(std::string_view name);
// Narrow modes have the name of the wide one, one sideband of a synchronous one that of both.
std::string_view RigModeName(int row);

struct RigPassband {
    double low = 0; // Hz from the tuned frequency
    double high = 0;
};

constexpr double WidestPassband = 1e6; // Hz

// A passband of that width in Hz where the mode needs it: at the same distance from the carrier in
// the sideband modes, around the same tone in the CW modes, around the carrier in the others.
// Its edges are whole.
RigPassband RigEdges(int row, const RigPassband& now, double width);

// In whole Hz.
std::string RigWidthText(const RigPassband& passband);

} // namespace larkspool
