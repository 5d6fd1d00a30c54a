#include "demo/Moment.h"

#include <chrono>
#include <cmath>

namespace larkspool::demo {

Moment Moment::Now() {
    using namespace std::chrono;
    const auto sinceEpoch = system_clock::now().time_since_epoch();
    const auto whole = duration_cast<seconds>(sinceEpoch);
    return {whole.count(), duration<double>(sinceEpoch - whole).count()};
}

Moment Moment::After(double seconds) const {
    const double sum = fraction + seconds;
    const double whole = std::floor(sum);
    return {second + static_cast<std::int64_t>(whole), sum - whole};
}

double Moment::Turns(double hertz) const {
    // Whole hertz complete whole turns in whole seconds, so only the rest counts there.
    const double rest = hertz - std::floor(hertz);
    const double turns = std::fmod(rest * static_cast<double>(second), 1.0) + hertz * fraction;
    return turns - std::floor(turns);
}

double Moment::Within(double period) const {
    const double into = std::fmod(static_cast<double>(second), period) + fraction;
    return std::fmod(into, period);
}

} // namespace larkspool::demo
