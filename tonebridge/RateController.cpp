#include "tonebridge/RateController.h"

#include <algorithm>
#include <cmath>

namespace tonebridge {

namespace {

constexpr double MeanTime = 15.0;          // s, time constant of the mean fill
constexpr double LargestError = 0.075;     // s
constexpr double ProportionalTime = 150.0; // s
constexpr double IntegralTime = 450.0;     // s
constexpr double LargestPart = 500e-6;     // of the proportional and the integral part each
constexpr double LargestCorrection = 1e-3; // 1.7 cents
constexpr double LargestSlew = 20e-6;      // per second

} // namespace

void RateController::Update(double fill, double elapsed) {
    meanFill += (fill - meanFill) * (1.0 - std::exp(-elapsed / MeanTime));
    const double error = std::clamp(meanFill - Target, -LargestError, LargestError);
    integral += error * elapsed / (IntegralTime * IntegralTime);
    integral = std::clamp(integral, -LargestPart, LargestPart);
    const double proportional = std::clamp(error / ProportionalTime, -LargestPart, LargestPart);
    const double wanted =
        std::clamp(proportional + integral, -LargestCorrection, LargestCorrection);
    const double step = LargestSlew * elapsed;
    correction += std::clamp(wanted - correction, -step, step);
}

} // namespace tonebridge
