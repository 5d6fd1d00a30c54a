#pragma once

#include "console/ModeSettingsClass.h"

#include <cstdint>
#include <string>

namespace larkspool {

// What the program remembers between runs, apart from favourites and schedules. Owned by App; the
// controls' events write into it at once, the file is written when the program quits.
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

// What holds where there is no file.
Preferences DefaultPreferences();

// The stored form. Decoding takes any bytes: what is missing reads as 0 or empty, and a port,
// frequency or waterfall setting that could not work is replaced by its default.
std::string EncodePreferences(const Preferences& preferences);
Preferences DecodePreferences(std::string bytes);

} // namespace larkspool
