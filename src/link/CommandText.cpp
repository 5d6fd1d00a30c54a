#include "link/CommandText.h"

#include "platform/Text.h"

#include <cmath>

namespace larkspool::command {

namespace {

constexpr double StartStep = 1.78814; // Hz in one unit of a waterfall's start

std::string Digit(bool value) { return value ? "1" : "0"; }

} // namespace

std::string Modulation(std::string_view mode, std::int64_t lowCut, std::int64_t hiCut,
                       std::string_view frequency) {
    return "SET mod=" + std::string(mode) + " low_cut=" + Str(lowCut) + " high_cut=" + Str(hiCut) +
           " freq=" + std::string(frequency);
}

std::string SetAgc(const Agc& agc) {
    return "SET agc=" + Digit(agc.on) + " hang=" + Digit(agc.hang) +
           " thresh=" + Str(agc.threshold) + " slope=" + Str(agc.slope) +
           " decay=" + Str(agc.decay) + " manGain=" + Str(agc.manualGain);
}

std::string Identity(std::string_view name) { return "SET ident_user=" + std::string(name); }

std::string GeoLocation(std::string_view place) { return "SET geoloc=" + std::string(place); }

std::string Squelch(int level, double seconds) {
    return "SET squelch=" + Str(level) + " param=" + Str(seconds);
}

std::string DeEmphasis(int index) { return "SET de_emp=" + Str(index); }

std::string Mute(bool mute) { return "SET mute=" + Digit(mute); }

std::array<std::string, 4> Waterfall(int speed, int compression, int zoom, double startFreq) {
    const std::int64_t start = WholePart(std::round(startFreq * 1000.0 / StartStep));
    return {"SET maxdb=0 mindb=-200", "SET zoom=" + Str(zoom) + " start=" + Str(start),
            "SET wf_speed=" + Str(speed), "SET wf_comp=" + Str(compression)};
}

} // namespace larkspool::command
