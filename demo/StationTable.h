#pragma once

#include <span>
#include <string>

namespace larkspool::demo {

// How a station is modulated.
enum class Kind {
    Carrier,       // a bare carrier
    DriftingTone,  // a carrier that swings slowly around its frequency
    TimeTone,      // AM 50 %: 1000 Hz without end, a 2000 Hz pip on each second
    TimePips,      // AM 50 %: a 1000 Hz pip on each second, silence between
    FirstTune,     // AM
    SecondTune,    // AM
    DeepVoice,     // AM
    HighVoice,     // AM
    Morse,         // keyed carrier
    Teleprinter,   // 50 baud, shifted by +- 100 Hz, space high
    LowerSideband, // voice
    UpperSideband, // voice
    Frequency,     // FM, the first tune
};

// One station. Its level is that of the unmodulated carrier, or of the loudest syllable where there
// is no carrier, on an antenna with a gain of 0 dB.
struct Station {
    double khz = 0.0;
    Kind kind = Kind::Carrier;
    double dbm = 0.0;
    double bearing = 0.0;        // direction from the site, degrees
    double fadingDb = 0.0;       // the level swings by so much up and down
    double depth = 0.7;          // of AM, from 0 to 1
    double speed = 1.0;          // of speech in a sideband, 1 as rendered
    double wordsPerMinute = 0.0; // of Morse
    double swingHz = 0.0;        // of a drifting tone to either side, within five minutes
    double deviationHz = 2500.0; // of FM
    std::string text = {};       // of Morse and teleprinters
};

// Everything on the air, from the lowest frequency to the highest: the stations of the table, and
// between them those of the band plan.
std::span<const Station> Stations();

} // namespace larkspool::demo
