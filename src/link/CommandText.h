#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// The text of every command to a receiver. Numbers are plain decimal, Booleans are 1 or 0.
namespace larkspool::command {

struct Agc {
    bool on = false;
    bool hang = false;
    int threshold = 0;  // dB
    int slope = 0;      // dB
    int decay = 0;      // ms
    int manualGain = 0; // dB
};

inline constexpr std::string_view Authorization = "SET auth t=kiwi p=#";
inline constexpr std::string_view KeepAlive = "SET keepalive";
inline constexpr std::string_view Browser = "SET browser=Mozilla";

// Uncompressed audio, no test signal, squelch off.
inline constexpr std::array<std::string_view, 5> AudioOK = {
    "SET AR OK in=12000 out=44100", "SET genattn=0", "SET gen=0 mix=-1", "SET squelch=0 param=0",
    "SET compression=0"};

// Edges in Hz relative to the tuned frequency; the frequency in kHz is the text of its field.
std::string Modulation(std::string_view mode, std::int64_t lowCut, std::int64_t hiCut,
                       std::string_view frequency);
std::string SetAgc(const Agc& agc);
std::string Identity(std::string_view name);
std::string GeoLocation(std::string_view place);
std::string Squelch(int level, double seconds);
std::string DeEmphasis(int index);
std::string Mute(bool mute);

// The four commands that set a waterfall's range, zoom and left edge, speed and compression, in the
// order in which to send them. startFreq: the left edge in kHz.
std::array<std::string, 4> Waterfall(int speed, int compression, int zoom, double startFreq);

} // namespace larkspool::command
