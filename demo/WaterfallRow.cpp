#include "demo/WaterfallRow.h"

#include "demo/Noise.h"

#include <algorithm>
#include <cmath>

namespace larkspool::demo {
namespace {

constexpr double WholeSpan = 30.0e6;
constexpr double WindowNoiseBins = 2.0; // noise bandwidth of the window below, in bins
constexpr int DeepestPlainZoom = 11;

// The four-term Blackman-Harris window: strong stations don't smear over weak ones.
double WindowAt(double share) {
    const double angle = Turn * share;
    return 0.35875 - 0.48829 * std::cos(angle) + 0.14128 * std::cos(2.0 * angle) -
           0.01168 * std::cos(3.0 * angle);
}

} // namespace

WaterfallRow::WaterfallRow(const Band& sharedBand, const Antenna& ownAntenna)
    : band(sharedBand), antenna(ownAntenna) {}

double WaterfallRow::LeftEdge(const Tuning& tuning) {
    return tuning.start * WholeSpan / static_cast<double>(1 << 24);
}

double WaterfallRow::Span(const Tuning& tuning) { return std::ldexp(WholeSpan, -tuning.zoom); }

void WaterfallRow::Prepare(std::size_t size) {
    if (fft && fft->Size() == size) {
        return;
    }
    fft = std::make_unique<Fft>(size);
    window.resize(size);
    double sum = 0.0;
    for (std::size_t i = 0; i < size; ++i) {
        sum += window[i] =
            static_cast<float>(WindowAt(static_cast<double>(i) / static_cast<double>(size)));
    }
    for (float& value : window) {
        value /= static_cast<float>(sum);
    }
}

// Noise has its own level in each bin, so that wide spans show it sink with frequency.
void WaterfallRow::AddNoise(const Tuning& tuning, const Moment& at) {
    constexpr std::size_t Step = 32; // bins over which the level is taken as even
    const double binWidth = Span(tuning) / Bins;
    const std::size_t size = spectrum.size();
    Noise noise(Scramble(band.Seed() + 5, static_cast<std::uint64_t>(at.second),
                         static_cast<std::uint64_t>(at.fraction * 1.0e9)));
    float scale = 0.0F;
    for (std::size_t bin = 0; bin < Bins; ++bin) {
        if (bin % Step == 0) {
            const double hertz = LeftEdge(tuning) + static_cast<double>(bin) * binWidth;
            const double power = std::pow(10.0, antenna.NoiseDbmHz(hertz) / 10.0) * binWidth *
                                 WindowNoiseBins * band.CrashFactor(antenna, at, hertz);
            scale = static_cast<float>(std::sqrt(power));
        }
        spectrum[(bin + size - Bins / 2) % size] += scale * noise.NextComplex();
    }
}

std::vector<std::uint8_t> WaterfallRow::Row(const Tuning& tuning, const Moment& until) {
    // Twice the span is looked at, so that what lies beyond the edges folds into the part not
    // shown; deep zooms look longer instead of narrower.
    const int deeper = std::max(0, tuning.zoom - DeepestPlainZoom);
    const std::size_t size = 2 * Bins << deeper;
    const double rate = std::ldexp(2.0 * Span(tuning), deeper);
    Prepare(size);
    spectrum.assign(size, Sample{});
    const Moment from = until.After(-static_cast<double>(size) / rate);
    const double binWidth = rate / static_cast<double>(size);
    band.AddStations(antenna, from, LeftEdge(tuning) + binWidth * Bins / 2.0, rate, spectrum);
    for (std::size_t i = 0; i < size; ++i) {
        spectrum[i] *= window[i];
    }
    fft->Forward(spectrum);
    AddNoise(tuning, until);

    std::vector<std::uint8_t> message{'W', '/', 'F', 0};
    message.reserve(16 + Bins);
    const std::uint32_t header[] = {
        static_cast<std::uint32_t>(static_cast<std::int64_t>(tuning.start)),
        static_cast<std::uint32_t>(tuning.zoom), sequence++};
    for (const std::uint32_t field : header) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            message.push_back(static_cast<std::uint8_t>(field >> shift & 0xFF));
        }
    }
    const double lowest = std::min(tuning.minDb, tuning.maxDb);
    for (std::size_t bin = 0; bin < Bins; ++bin) {
        const double power = std::norm(spectrum[(bin + size - Bins / 2) % size]);
        const double dbm = std::clamp(10.0 * std::log10(power + 1.0e-25), lowest, tuning.maxDb);
        message.push_back(static_cast<std::uint8_t>(std::clamp(std::lrint(dbm) + 255, 0L, 255L)));
    }
    return message;
}

} // namespace larkspool::demo
