#include "console/ModeSettingsClass.h"

#include <cstddef>

namespace larkspool {

void ModeSettingsClass::SetDefaults() {
    struct Passband {
        std::int32_t low;
        std::int32_t high;
    };
    static constexpr std::array<Passband, WithDefaults> Passbands = {{{-5000, 5000},
                                                                      {-2500, 2500},
                                                                      {-2700, -100},
                                                                      {100, 2700},
                                                                      {300, 700},
                                                                      {470, 530},
                                                                      {-6000, 6000},
                                                                      {-2400, -100},
                                                                      {100, 2400},
                                                                      {-4900, 4900},
                                                                      {-4900, 0},
                                                                      {0, 4900},
                                                                      {-4900, 4900},
                                                                      {-5000, 5000}}};
    for (std::size_t mode = 0; mode < Passbands.size(); ++mode) {
        lowCut[mode] = Passbands[mode].low;
        hiCut[mode] = Passbands[mode].high;
        agc[mode] = true;
        hang[mode] = false;
        threshold[mode] = -130;
        slope[mode] = 6.0;
        decay[mode] = 1000;
        manualGain[mode] = 50;
    }
}

} // namespace larkspool
