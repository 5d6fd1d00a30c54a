#include "demo/Command.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace larkspool::demo {
namespace {

constexpr std::array<std::string_view, 12> ModeNames{"am",   "amn", "lsb", "usb", "cw",  "cwn",
                                                     "nbfm", "lsn", "usn", "sam", "sal", "sau"};

std::optional<double> Number(std::string_view text) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

void Take(std::string_view text, double lowest, double highest, double& value) {
    if (const auto number = Number(text)) {
        value = std::clamp(*number, lowest, highest);
    }
}

void Take(std::string_view text, int lowest, int highest, int& value) {
    double number = value;
    Take(text, static_cast<double>(lowest), static_cast<double>(highest), number);
    value = static_cast<int>(number);
}

void Take(std::string_view text, bool& value) {
    if (const auto number = Number(text)) {
        value = *number != 0.0;
    }
}

void TakeMode(std::string_view text, Tuning& tuning) {
    const auto found = std::ranges::find(ModeNames, text);
    if (found == ModeNames.end()) {
        return;
    }
    tuning.mode = static_cast<Mode>(found - ModeNames.begin());
    tuning.tuned = true;
}

void TakeTuning(std::string_view key, std::string_view value, Tuning& tuning) {
    constexpr double Widest = 6000.0;
    if (key == "mod") {
        TakeMode(value, tuning);
    } else if (key == "low_cut") {
        Take(value, -Widest, Widest, tuning.lowCut);
    } else if (key == "high_cut") {
        Take(value, -Widest, Widest, tuning.highCut);
    } else if (key == "freq") {
        Take(value, 0.0, 32000.0, tuning.khz);
    }
}

void TakeLoudness(std::string_view key, std::string_view value, Tuning& tuning) {
    if (key == "agc") {
        Take(value, tuning.agc);
    } else if (key == "hang") {
        Take(value, tuning.hang);
    } else if (key == "thresh") {
        Take(value, -160.0, 0.0, tuning.threshold);
    } else if (key == "slope") {
        Take(value, 0.0, 10.0, tuning.slope);
    } else if (key == "decay") {
        Take(value, 0.0, 10000.0, tuning.decay);
    } else if (key == "manGain") {
        Take(value, 0.0, 120.0, tuning.manualGain);
    } else if (key == "squelch") {
        Take(value, 0.0, 100.0, tuning.squelch);
    } else if (key == "param") {
        Take(value, 0.0, 60.0, tuning.squelchTail);
    } else if (key == "de_emp") {
        Take(value, 0, 2, tuning.deEmphasis);
    } else if (key == "mute") {
        Take(value, tuning.muted);
    }
}

void TakeWaterfall(std::string_view key, std::string_view value, Tuning& tuning) {
    if (key == "zoom") {
        tuning.zoomed = tuning.zoomed || Number(value).has_value();
        Take(value, 0, 14, tuning.zoom);
    } else if (key == "start") {
        Take(value, -1.0e6, 1.8e7, tuning.start);
    } else if (key == "maxdb") {
        Take(value, -200.0, 100.0, tuning.maxDb);
    } else if (key == "mindb") {
        Take(value, -200.0, 0.0, tuning.minDb);
    } else if (key == "wf_speed") {
        Take(value, 0, 4, tuning.speed);
    }
}

// Cuts the next blank-separated word off the front of text.
std::string_view NextWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

} // namespace

bool Obey(std::string_view command, Tuning& tuning) {
    constexpr std::string_view Start = "SET ";
    if (!command.starts_with(Start)) {
        return false;
    }
    command.remove_prefix(Start.size());
    if (command.starts_with("ident_user=") || command.starts_with("geoloc=")) {
        return true; // a name may look like a setting
    }
    if (command.starts_with("auth ")) {
        tuning.authorised = true;
    }
    if (command.starts_with("AR OK")) {
        tuning.audioAccepted = true;
    }
    while (!command.empty()) {
        const std::string_view word = NextWord(command);
        const std::size_t equals = word.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        const std::string_view key = word.substr(0, equals);
        const std::string_view value = word.substr(equals + 1);
        TakeTuning(key, value, tuning);
        TakeLoudness(key, value, tuning);
        TakeWaterfall(key, value, tuning);
    }
    return true;
}

} // namespace larkspool::demo
