#include "demo/PassbandFilter.h"

#include <algorithm>
#include <cmath>

namespace larkspool::demo {
namespace {

constexpr std::size_t Taps = PassbandFilter::InputSize + 1;

double Blackman(std::size_t i) {
    const double angle = Turn * static_cast<double>(i) / static_cast<double>(Taps - 1);
    return 0.42 - 0.5 * std::cos(angle) + 0.08 * std::cos(2.0 * angle);
}

double Sinc(double x) { return std::abs(x) < 1.0e-9 ? 1.0 : std::sin(x) / x; }

} // namespace

PassbandFilter::PassbandFilter()
    : response(2 * InputSize), previous(InputSize), spectrum(2 * InputSize), folded(InputSize) {
    Set(-5000.0, 5000.0, 24000.0);
}

void PassbandFilter::Set(double low, double high, double rate) {
    // Room for the filter's own slope below the half of the output's rate.
    const double widest = rate / 4.0 - 60.0;
    if (low > high) {
        std::swap(low, high);
    }
    low = std::clamp(low, -widest, widest - 20.0);
    high = std::clamp(high, low + 20.0, widest);
    const double half = (high - low) / 2.0 / rate;
    const double center = (high + low) / 2.0 / rate;
    std::ranges::fill(response, Sample{});
    for (std::size_t i = 0; i < Taps; ++i) {
        const double at = static_cast<double>(i) - static_cast<double>(Taps - 1) / 2.0;
        const double tap = 2.0 * half * Sinc(Turn * half * at) * Blackman(i);
        response[i] = {static_cast<float>(tap * std::cos(Turn * center * at)),
                       static_cast<float>(tap * std::sin(Turn * center * at))};
    }
    wide.Forward(response);
    float most = 1.0e-9F;
    double sum = 0.0;
    for (const Sample& value : response) {
        most = std::max(most, std::abs(value));
    }
    for (Sample& value : response) {
        value /= most;
        sum += std::norm(value);
    }
    noiseBandwidth = sum * rate / static_cast<double>(response.size());
}

void PassbandFilter::Process(std::span<const Sample> input, std::span<Sample> output) {
    std::ranges::copy(previous, spectrum.begin());
    std::ranges::copy(input, spectrum.begin() + InputSize);
    std::ranges::copy(input, previous.begin());
    wide.Forward(spectrum);
    constexpr std::size_t Half = InputSize / 2;
    for (std::size_t i = 0; i < Half; ++i) {
        const std::size_t mirrored = 2 * InputSize - Half + i;
        folded[i] = Times(spectrum[i], response[i]) * 0.5F;
        folded[Half + i] = Times(spectrum[mirrored], response[mirrored]) * 0.5F;
    }
    narrow.Inverse(folded);
    std::copy_n(folded.begin() + OutputSize, OutputSize, output.begin());
}

} // namespace larkspool::demo
