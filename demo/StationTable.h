#pragma once

#include <span>
#include <string_view>

namespace larkspool::demo {

// How a station is modulated. The comments say what its detail means, where it has one.
enum class Kind {
    Carrier,       // a bare carrier
    DriftingTone,  // a carrier that swings by +- detail Hz within five minutes
    TimeTone,      // AM 50 %: 1000 Hz without end, a 2000 Hz pip on each second
    TimePips,      // AM 50 %: a 1000 Hz pip on each second, silence between
    FirstTune,     // AM; detail: depth from 0 to 1
    SecondTune,    // AM; detail: depth
    DeepVoice,     // AM; detail: depth
    HighVoice,     // AM; detail: depth
    Morse,         // keyed carrier; detail: words a minute
    Teleprinter,   // 50 baud, shifted by +- 100 Hz, space high
    LowerSideband, // voice; detail: speed of speech, 1 as rendered
    UpperSideband, // voice; detail: speed of speech
    Frequency,     // FM, the first tune; detail: deviation in Hz
};

// One station. Its level is that of the unmodulated carrier, or of the loudest
// syllable where there is no carrier, on an antenna with a gain of 0 dB.
struct Station {
    double khz;
    Kind kind;
    double dbm;
    double detail;
    double bearing;  // direction from the site, degrees
    double fadingDb; // the level swings by so much up and down
    std::string_view text;
};

// Everything on the air, from the lowest frequency to the highest.
std::span<const Station> Stations();

} // namespace larkspool::demo
