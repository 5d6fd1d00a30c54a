#pragma once

#include <array>
#include <cstdint>

namespace larkspool {

// The passband and AGC settings of each demodulation mode, indexed by the mode's row in the popup.
// Owned by App. Rows 12 to 19 exist in the stored file only; no control uses them.
struct ModeSettingsClass {
    static constexpr int Count = 20;
    static constexpr int WithDefaults = 14;

    // The captions of the popup are also the modes' names on the wire.
    static constexpr std::array<const char*, 12> Captions = {
        "am", "amn", "lsb", "usb", "cw", "cwn", "nbfm", "lsn", "usn", "sam", "sal", "sau"};

    static bool Holds(std::int64_t mode) { return mode >= 0 && mode < Count; }
    void SetDefaults();

    std::array<std::int32_t, Count> lowCut{}; // Hz relative to the tuned frequency
    std::array<std::int32_t, Count> hiCut{};  // Hz relative to the tuned frequency
    std::array<bool, Count> agc{};
    std::array<bool, Count> hang{};
    std::array<std::int32_t, Count> threshold{};  // dB
    std::array<double, Count> slope{};            // dB
    std::array<std::int32_t, Count> decay{};      // ms
    std::array<std::int32_t, Count> manualGain{}; // dB
};

} // namespace larkspool
