#include "tonebridge/RateController.h"

#include <algorithm>
#include <cmath>

namespace tonebridge {

namespace {

constexpr double meanTime = 15.0;          // s, time constant of the mean fill
constexpr double largestError = 0.075;     // s
constexpr double proportionalTime = 150.0; // s
constexpr double integralTime = 450.0;     // s
constexpr double largestPart = 500e-6;     // of the proportional and the integral part each
constexpr double largestCorrection = 1e-3; // 1.7 cents
constexpr double largestSlew = 20e-6;      // a second

} // namespace

void RateController::Update(double fill, double elapsed) {
    meanFill += (fill - meanFill) * (1.0 - std::exp(-elapsed / meanTime));
    const double error = std::clamp(meanFill - target, -largestError, largestError);
    integral += error * elapsed / (integralTime * integralTime);
    integral = std::clamp(integral, -largestPart, largestPart);
    const double proportional = std::clamp(error / proportionalTime, -largestPart, largestPart);
    const double wanted =
        std::clamp(proportional + integral, -largestCorrection, largestCorrection);
    const double step = largestSlew * elapsed;
    correction += std::clamp(wanted - correction, -step, step);
}

} // namespace tonebridge
