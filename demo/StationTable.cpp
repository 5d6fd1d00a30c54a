#include "demo/StationTable.h"

#include <array>

namespace larkspool::demo {
namespace {

using enum Kind;

// The one place to add a station; keep the order of frequencies. Facts that tests
// and the README rely on: 10000, 10020, nothing from 10030 to 10125 kHz, and 14100.
constexpr std::array stations{
    // Long and medium wave.
    Station{77.5, Carrier, -70.0, 0.0, 90.0, 0.0, ""},
    Station{153.0, FirstTune, -62.0, 0.7, 100.0, 1.0, ""},
    Station{198.0, DeepVoice, -58.0, 0.7, 280.0, 1.0, ""},
    Station{252.0, SecondTune, -66.0, 0.6, 250.0, 2.0, ""},
    Station{345.0, Morse, -74.0, 8.0, 30.0, 0.0, "LPN"},
    Station{392.0, Morse, -80.0, 8.0, 200.0, 2.0, "SKA"},
    Station{549.0, HighVoice, -64.0, 0.7, 110.0, 2.0, ""},
    Station{648.0, FirstTune, -60.0, 0.6, 330.0, 1.0, ""},
    Station{693.0, DeepVoice, -55.0, 0.7, 290.0, 1.0, ""},
    Station{810.0, SecondTune, -63.0, 0.7, 10.0, 2.0, ""},
    Station{909.0, HighVoice, -52.0, 0.7, 300.0, 1.0, ""},
    Station{999.0, FirstTune, -68.0, 0.6, 180.0, 3.0, ""},
    Station{1215.0, SecondTune, -58.0, 0.7, 270.0, 2.0, ""},
    Station{1395.0, DeepVoice, -66.0, 0.6, 80.0, 3.0, ""},
    Station{1539.0, FirstTune, -70.0, 0.7, 130.0, 4.0, ""},
    // 160 m to 60 m.
    Station{1812.0, Morse, -85.0, 20.0, 20.0, 3.0, "CQ CQ DE LARK1 LARK1 K"},
    Station{1838.0, Morse, -92.0, 12.0, 260.0, 2.0, "VVV DE OWL"},
    Station{1880.0, LowerSideband, -80.0, 1.0, 0.0, 3.0, ""},
    Station{1933.0, LowerSideband, -84.0, 1.1, 270.0, 3.0, ""},
    Station{2500.0, TimePips, -78.0, 0.0, 310.0, 2.0, ""},
    Station{3520.0, Morse, -82.0, 22.0, 45.0, 3.0, "CQ TEST LARK2 LARK2 TEST"},
    Station{3575.0, Morse, -88.0, 10.0, 120.0, 1.0, "VVV DE FINCH"},
    Station{3660.0, LowerSideband, -76.0, 1.05, 350.0, 3.0, ""},
    Station{3715.0, LowerSideband, -79.0, 0.9, 90.0, 2.0, ""},
    Station{3955.0, HighVoice, -66.0, 0.7, 150.0, 4.0, ""},
    Station{4583.0, Teleprinter, -72.0, 0.0, 70.0, 2.0, "RYRYRY DE LARK WEATHER FAIR WIND WEST "},
    Station{5000.0, TimePips, -65.0, 0.0, 290.0, 0.0, ""},
    Station{5450.0, UpperSideband, -80.0, 1.0, 300.0, 2.0, ""},
    // 49 m and 41 m, with the 40 m band between.
    Station{5975.0, SecondTune, -58.0, 0.7, 140.0, 4.0, ""},
    Station{6055.0, DeepVoice, -63.0, 0.8, 220.0, 5.0, ""},
    Station{6160.0, FirstTune, -61.0, 0.6, 60.0, 4.0, ""},
    Station{7030.0, Morse, -84.0, 18.0, 210.0, 3.0, "CQ DE WREN WREN K"},
    Station{7038.5, Morse, -90.0, 12.0, 310.0, 1.0, "VVV DE LARK"},
    Station{7055.0, LowerSideband, -74.0, 1.0, 180.0, 2.0, ""},
    Station{7090.0, LowerSideband, -81.0, 1.15, 250.0, 3.0, ""},
    Station{7143.0, LowerSideband, -77.0, 0.92, 30.0, 4.0, ""},
    Station{7225.0, FirstTune, -59.0, 0.7, 100.0, 5.0, ""},
    Station{7325.0, HighVoice, -62.0, 0.7, 80.0, 4.0, ""},
    Station{9420.0, SecondTune, -57.0, 0.7, 130.0, 4.0, ""},
    Station{9580.0, DeepVoice, -60.0, 0.7, 70.0, 5.0, ""},
    Station{9650.0, FirstTune, -64.0, 0.6, 20.0, 3.0, ""},
    Station{9990.0, DriftingTone, -85.0, 400.0, 240.0, 0.0, ""},
    Station{10000.0, TimeTone, -60.0, 0.0, 0.0, 0.0, ""},
    Station{10020.0, Carrier, -70.0, 0.0, 0.0, 0.0, ""},
    Station{10132.0, Morse, -80.0, 15.0, 50.0, 0.0, "VVV DE SWIFT"},
    Station{10142.0, Teleprinter, -78.0, 0.0, 80.0, 2.0, "DE SWIFT RYRYRY THE QUICK BROWN FOX "},
    // 31 m up to 10 m.
    Station{11780.0, FirstTune, -63.0, 0.7, 230.0, 5.0, ""},
    Station{11875.0, HighVoice, -61.0, 0.7, 90.0, 4.0, ""},
    Station{13690.0, SecondTune, -66.0, 0.6, 110.0, 5.0, ""},
    Station{14030.0, Morse, -83.0, 24.0, 290.0, 4.0, "CQ CQ DE LARK3 LARK3 K"},
    Station{14070.0, Teleprinter, -85.0, 0.0, 300.0, 3.0, "CQ CQ DE HERON HERON "},
    Station{14100.0, Morse, -75.0, 20.0, 0.0, 0.0, "VVV DE LARK"},
    Station{14195.0, UpperSideband, -76.0, 1.0, 280.0, 3.0, ""},
    Station{14227.0, UpperSideband, -82.0, 1.12, 60.0, 4.0, ""},
    Station{14260.0, UpperSideband, -79.0, 0.9, 140.0, 4.0, ""},
    Station{15000.0, TimePips, -66.0, 0.0, 290.0, 0.0, ""},
    Station{15245.0, DeepVoice, -64.0, 0.7, 75.0, 5.0, ""},
    Station{15400.0, FirstTune, -67.0, 0.7, 170.0, 4.0, ""},
    Station{17770.0, HighVoice, -68.0, 0.7, 190.0, 5.0, ""},
    Station{18110.0, Morse, -86.0, 14.0, 270.0, 1.0, "VVV DE HERON"},
    Station{18140.0, UpperSideband, -83.0, 1.05, 320.0, 4.0, ""},
    Station{21150.0, Morse, -88.0, 16.0, 100.0, 2.0, "VVV DE STORK"},
    Station{21285.0, UpperSideband, -81.0, 0.95, 250.0, 5.0, ""},
    Station{21600.0, SecondTune, -72.0, 0.7, 120.0, 5.0, ""},
    Station{24930.0, Morse, -90.0, 18.0, 285.0, 2.0, "VVV DE CRANE"},
    Station{27185.0, DeepVoice, -78.0, 0.8, 40.0, 4.0, ""},
    Station{28200.0, Morse, -87.0, 12.0, 0.0, 1.0, "VVV DE KITE"},
    Station{28500.0, UpperSideband, -84.0, 1.0, 270.0, 5.0, ""},
    Station{29600.0, Frequency, -70.0, 2500.0, 10.0, 2.0, ""},
};

} // namespace

std::span<const Station> Stations() { return stations; }

} // namespace larkspool::demo
