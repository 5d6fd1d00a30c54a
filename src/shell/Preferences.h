#pragma once

#include "console/ModeSettingsClass.h"

#include <cstdint>
#include <string>

namespace larkspool {

// What the program remembers between runs, except favorites and schedules. Owned by App. The
// controls' events change it at once; the file is written when the program quits.
struct Preferences {
    std::string prefsLastURL;             // the receiver's address
    std::int32_t prefsLastPort = 0;       // and port
    double prefsLastFreq = 0;             // kHz
    std::uint32_t prefsLastMode = 0;      // row of the mode popup
    std::int32_t prefsLastVolume = 0;     // slider value
    std::string defaultSoundOutputDevice; // name of the device last chosen
    std::string prefsUserName;
    std::string prefsUserQTH;              // the user's location
    std::int32_t prefsWaterfallGain = 0;   // slider value
    std::int32_t prefsWaterfallOffset = 0; // slider value
    std::int32_t prefsSquelch = 0;         // slider value
    std::int32_t prefsSquelchTime = 0;     // row of the squelch time popup
    bool prefsUseNetworking = false;
    bool prefsReconnect = false;
    bool prefsUpdateWaterfall = false;
    double prefsSquelchedDeadSpace = 0; // seconds
    bool noUpdateCheck = false;
    std::uint32_t lastUpdateCheckVersion = 0; // digits of the version that the user skipped
    ModeSettingsClass prefsModeSettings;
};

// The values without a file.
Preferences DefaultPreferences();

// The stored form. Decoding accepts any bytes: a missing field is 0 or empty, and a port, frequency
// or waterfall setting that cannot work is replaced by its default.
std::string EncodePreferences(const Preferences& preferences);
Preferences DecodePreferences(std::string bytes);

} // namespace larkspool
