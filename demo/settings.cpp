// Prints the settings of a console that is to be shown to someone: the receiver's address filled
// in, the waterfall running, the remote control switched on.
//   larkspool-demo-settings HOST PORT >"Larkspool Prefs"
#include "platform/Text.h"
#include "shell/Preferences.h"

#include <cstdint>
#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: larkspool-demo-settings HOST PORT >\"Larkspool Prefs\"\n", stderr);
        return 2;
    }
    larkspool::Preferences prefs = larkspool::DefaultPreferences();
    prefs.prefsLastURL = argv[1];
    prefs.prefsLastPort = larkspool::WholePart<std::int32_t>(larkspool::Val(argv[2]));
    prefs.prefsUpdateWaterfall = true;
    prefs.prefsUseNetworking = true;
    const std::string file = larkspool::EncodePreferences(prefs);
    const bool written = std::fwrite(file.data(), 1, file.size(), stdout) == file.size();
    return written && std::fflush(stdout) == 0 ? 0 : 1;
}
