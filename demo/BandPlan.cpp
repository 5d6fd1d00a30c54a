#include "demo/BandPlan.h"

#include "demo/Noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace larkspool::demo {
namespace {

enum class Use { Broadcast, Morse, Teleprinter, Lower, Upper };

struct PlannedBand {
    Use use;
    double fromKhz;
    double toKhz;
    double slotKhz;
    double rasterKhz;    // frequencies are multiples of it
    double share;        // of the slots that hold a station, from 0 to 1
    double strongestDbm; // down to 22 dB less
};

constexpr PlannedBand Bands[]{
    // Long, medium and short wave broadcasts.
    {Use::Broadcast, 153.0, 279.0, 27.0, 9.0, 0.5, -58.0},
    {Use::Broadcast, 531.0, 1602.0, 27.0, 9.0, 0.95, -54.0},
    {Use::Broadcast, 5900.0, 6200.0, 20.0, 5.0, 0.9, -58.0},
    {Use::Broadcast, 7205.0, 7420.0, 18.0, 5.0, 0.9, -58.0},
    {Use::Broadcast, 9420.0, 9870.0, 20.0, 5.0, 0.95, -58.0},
    {Use::Broadcast, 11600.0, 12000.0, 32.0, 5.0, 0.8, -60.0},
    {Use::Broadcast, 13570.0, 13870.0, 40.0, 5.0, 0.8, -62.0},
    {Use::Broadcast, 15100.0, 15600.0, 42.0, 5.0, 0.8, -62.0},
    {Use::Broadcast, 17480.0, 17900.0, 50.0, 5.0, 0.7, -64.0},
    {Use::Broadcast, 21450.0, 21700.0, 60.0, 5.0, 0.7, -68.0},
    // The lower ends of the amateur bands.
    {Use::Morse, 1810.0, 1838.0, 8.0, 0.5, 0.7, -82.0},
    {Use::Morse, 3501.0, 3565.0, 6.0, 0.5, 0.8, -80.0},
    {Use::Morse, 7001.0, 7038.0, 3.0, 0.1, 0.95, -82.0},
    {Use::Morse, 10134.0, 10150.0, 6.0, 0.5, 0.7, -88.0},
    {Use::Morse, 14001.0, 14060.0, 3.5, 0.1, 0.95, -84.0},
    {Use::Morse, 18069.0, 18095.0, 10.0, 0.5, 0.7, -88.0},
    {Use::Morse, 21005.0, 21050.0, 8.0, 0.5, 0.8, -86.0},
    {Use::Morse, 24892.0, 24912.0, 8.0, 0.5, 0.7, -90.0},
    {Use::Morse, 28005.0, 28040.0, 10.0, 0.5, 0.8, -88.0},
    {Use::Teleprinter, 3580.0, 3600.0, 6.0, 0.5, 0.5, -86.0},
    {Use::Teleprinter, 7041.0, 7050.0, 4.0, 0.5, 0.9, -86.0},
    {Use::Teleprinter, 14075.0, 14096.0, 6.0, 0.5, 0.8, -86.0},
    {Use::Teleprinter, 21080.0, 21100.0, 8.0, 0.5, 0.6, -90.0},
    // Voices above them, and of ships and aircraft between.
    {Use::Lower, 1845.0, 1950.0, 22.0, 1.0, 0.8, -80.0},
    {Use::Lower, 3605.0, 3800.0, 14.0, 1.0, 0.9, -76.0},
    {Use::Lower, 7064.0, 7190.0, 9.0, 1.0, 0.95, -78.0},
    {Use::Upper, 5350.0, 5700.0, 90.0, 1.0, 0.6, -80.0},
    {Use::Upper, 6530.0, 6680.0, 70.0, 1.0, 0.6, -82.0},
    {Use::Upper, 8820.0, 8960.0, 60.0, 1.0, 0.6, -80.0},
    {Use::Upper, 11180.0, 11390.0, 90.0, 1.0, 0.6, -80.0},
    {Use::Upper, 14114.0, 14345.0, 11.0, 1.0, 0.9, -78.0},
    {Use::Upper, 18118.0, 18165.0, 12.0, 1.0, 0.8, -82.0},
    {Use::Upper, 21200.0, 21400.0, 24.0, 1.0, 0.8, -80.0},
    {Use::Upper, 24935.0, 24985.0, 18.0, 1.0, 0.7, -86.0},
    {Use::Upper, 28400.0, 28600.0, 30.0, 1.0, 0.8, -84.0},
};

constexpr std::array<std::string_view, 24> Names{
    "ROBIN", "PIPIT",  "DUNLIN", "PLOVER",  "CURLEW",  "LINNET", "SISKIN", "TERN",
    "EIDER", "GANNET", "SNIPE",  "RUFF",    "MERLIN",  "OSPREY", "KNOT",   "TWITE",
    "SCAUP", "WIGEON", "DIPPER", "BITTERN", "KESTREL", "AVOCET", "ORIOLE", "SHRIKE"};

// What a slot holds follows from the Hz where it begins; each question has its own answer.
class Slot {
  public:
    explicit Slot(double khz) : hertz(static_cast<std::uint64_t>(std::llround(khz * 1000.0))) {}

    // Even from 0 up to, not including, 1.
    double Even(std::uint64_t question) const { return Fraction(Scramble(hertz, question)); }
    // Even from 0 up to, not including, count.
    std::size_t Pick(std::uint64_t question, std::size_t count) const {
        return static_cast<std::size_t>(Even(question) * static_cast<double>(count));
    }

  private:
    std::uint64_t hertz;
};

enum Question : std::uint64_t { IsUsed, Place, Level, Bearing, Fading, Flavor, Who, What };

std::string MorseText(const Slot& slot) {
    const std::string who(Names[slot.Pick(Who, Names.size())]);
    switch (slot.Pick(What, 4)) {
    case 0:
        return "CQ CQ DE " + who + " " + who + " K";
    case 1:
        return "CQ TEST DE " + who + " " + who;
    case 2:
        return who + " DE LARK UR RST 579 579 = NAME ROOK ROOK = HW? K";
    default:
        return "CQ DE " + who + " " + who + " PSE K";
    }
}

void Modulate(Station& station, Use use, const Slot& slot) {
    constexpr std::array Programs{Kind::FirstTune, Kind::SecondTune, Kind::DeepVoice,
                                  Kind::HighVoice};
    const std::string who(Names[slot.Pick(Who, Names.size())]);
    switch (use) {
    case Use::Broadcast:
        station.kind = Programs[slot.Pick(What, Programs.size())];
        station.depth = 0.6 + 0.2 * slot.Even(Flavor);
        break;
    case Use::Morse:
        station.kind = Kind::Morse;
        station.wordsPerMinute = 14.0 + static_cast<double>(slot.Pick(Flavor, 15));
        station.text = MorseText(slot);
        break;
    case Use::Teleprinter:
        station.kind = Kind::Teleprinter;
        station.text = "CQ CQ DE " + who + " " + who + " ";
        break;
    case Use::Lower:
    case Use::Upper:
        station.kind = use == Use::Lower ? Kind::LowerSideband : Kind::UpperSideband;
        station.speed = 0.88 + 0.28 * slot.Even(Flavor);
        break;
    }
}

// The station of a slot that is used. It keeps to the slot's lower half, so that it never meets the
// one of the next slot.
Station Planned(const PlannedBand& band, double slotKhz, const Slot& slot) {
    constexpr double RangeDb = 22.0;
    Station station;
    const double place = slotKhz + slot.Even(Place) * band.slotKhz / 2.0;
    station.khz = std::round(place / band.rasterKhz) * band.rasterKhz;
    station.dbm = std::round(band.strongestDbm - RangeDb * slot.Even(Level));
    station.bearing = 10.0 * static_cast<double>(slot.Pick(Bearing, 36));
    station.fadingDb = 1.0 + static_cast<double>(slot.Pick(Fading, 5));
    Modulate(station, band.use, slot);
    return station;
}

} // namespace

void AddPlannedStations(std::vector<Station>& stations) {
    constexpr double MostApartKhz = 13.0; // as far as the sound of a broadcast needs
    const std::vector<Station> known = stations;
    for (const PlannedBand& band : Bands) {
        const double apart = std::min(band.slotKhz / 2.0, MostApartKhz);
        const auto slots = static_cast<int>(std::ceil((band.toKhz - band.fromKhz) / band.slotKhz));
        for (int number = 0; number < slots; ++number) {
            const double khz = band.fromKhz + number * band.slotKhz;
            const Slot slot(khz);
            const Station station = Planned(band, khz, slot);
            const bool isFree = std::ranges::none_of(known, [&](const Station& other) {
                return std::abs(other.khz - station.khz) < apart;
            });
            if (isFree && slot.Even(IsUsed) < band.share) {
                stations.push_back(station);
            }
        }
    }
}

} // namespace larkspool::demo
