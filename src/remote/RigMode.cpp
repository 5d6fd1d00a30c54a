#include "remote/RigMode.h"

#include "console/ModeSettingsClass.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace larkspool {

namespace {

enum class Place { AroundCarrier, BelowCarrier, AboveCarrier, AroundTone };

struct Mode {
    std::string_view name;
    Place place;
};

constexpr std::array<Mode, ModeSettingsClass::Captions.size()> Modes = {{
    {"AM", Place::AroundCarrier},
    {"AM", Place::AroundCarrier},
    {"LSB", Place::BelowCarrier},
    {"USB", Place::AboveCarrier},
    {"CW", Place::AroundTone},
    {"CW", Place::AroundTone},
    {"FM", Place::AroundCarrier},
    {"LSB", Place::BelowCarrier},
    {"USB", Place::AboveCarrier},
    {"AMS", Place::AroundCarrier},
    {"AMS", Place::BelowCarrier},
    {"AMS", Place::AboveCarrier},
}};

struct Alias {
    std::string_view name;
    int row;
};

// Other names that programs send. A transceiver's data mode is a sideband whose sound goes to a
// computer.
constexpr std::array Aliases = {Alias{"CWR", 4}, Alias{"PKTLSB", 2}, Alias{"PKTUSB", 3},
                                Alias{"SAM", 9}};

} // namespace

std::optional<int> RigModeRow(std::string_view name) {
    for (std::size_t row = 0; row < Modes.size(); ++row) {
        if (Modes[row].name == name) {
            return static_cast<int>(row); // the wide mode comes first
        }
    }
    for (const Alias& alias : Aliases) {
        if (alias.name == name) {
            return alias.row;
        }
    }
    return std::nullopt;
}

std::string_view RigModeName(int row) { return Modes.at(static_cast<std::size_t>(row)).name; }

RigPassband RigEdges(int row, const RigPassband& now, double width) {
    double low = -width / 2;
    switch (Modes.at(static_cast<std::size_t>(row)).place) {
    case Place::BelowCarrier:
        low = now.high - width;
        break;
    case Place::AboveCarrier:
        low = now.low;
        break;
    case Place::AroundTone:
        low += (now.low + now.high) / 2;
        break;
    case Place::AroundCarrier:
        break;
    }
    low = std::round(low);
    return {low, low + std::round(width)};
}

std::string RigWidthText(const RigPassband& passband) {
    return Str(std::round(std::clamp(passband.high - passband.low, 0.0, WidestPassband)));
}

} // namespace larkspool
