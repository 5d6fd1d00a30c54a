#pragma once

#include <string_view>

namespace larkspool::demo {

enum class Mode { Am, Amn, Lsb, Usb, Cw, Cwn, Nbfm, Lsn, Usn, Sam, Sal, Sau };

// The settings of one client on one link.
struct Tuning {
    bool authorised = false;
    bool audioAccepted = false; // "SET AR OK" has come
    bool tuned = false;         // a first "SET mod=" has come

    Mode mode = Mode::Am;
    double lowCut = -5000.0; // Hz relative to the tuned frequency
    double highCut = 5000.0;
    double khz = 10000.0;

    bool agc = true;
    bool hang = false;
    double threshold = -130.0; // dBm
    double slope = 6.0;        // dB of loudness over 100 dB of signal
    double decay = 1000.0;     // ms
    double manualGain = 50.0;  // dB

    double squelch = 0.0;     // dB over the noise, 0: open
    double squelchTail = 0.0; // seconds
    int deEmphasis = 0;       // 0 off, 1: 75 us, 2: 50 us
    bool muted = false;

    bool zoomed = false; // a first "SET zoom=" has come
    int zoom = 0;        // the span is 30 MHz halved this many times
    double start = 0.0;  // left edge in units of 30 MHz / 2^24
    double maxDb = 0.0;
    double minDb = -200.0;
    int speed = 0; // 0 stopped, 1 to 4
};

// Executes one "SET ..." command; an unknown or unreadable one changes nothing. Returns whether it
// was a command at all.
bool Obey(std::string_view command, Tuning& tuning);

} // namespace larkspool::demo
