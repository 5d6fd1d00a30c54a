#include "sound/Simulation.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <ostream>

namespace tonebridge::test {

namespace {

constexpr double noteInterval = 0.01;
constexpr std::size_t notesPerSecond = 100;

} // namespace

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
    return out << scenario.length << " s, " << scenario.clockError * 1e6 << " ppm, jitter "
               << scenario.jitter << " s, tone " << scenario.tone << " Hz, callback "
               << scenario.callback << " at " << scenario.deviceRate << " Hz, seed "
               << scenario.seed;
}

Simulation::Simulation(const Scenario& scenario)
    : scene(scenario), random(scenario.seed),
      engine([this] { return static_cast<std::int64_t>(clock * 1e9); }),
      meter(scenario.tone, scenario.deviceRate, 0.5) {
    engine.SetDeviceRate(scene.deviceRate);
    nextStall = scene.stallEvery;
}

Outcome Simulation::Run() {
    Outcome outcome;
    outcome.lowestSinad = std::numeric_limits<double>::infinity();
    std::vector<float> sound(scene.callback);
    double nextSinad = std::min(settlingTime, scene.length / 2.0);
    Prime();
    arrival = NextArrival();
    for (std::uint64_t done = 0;; done += scene.callback) {
        const double time = static_cast<double>(done) / scene.deviceRate;
        if (time >= scene.length) {
            break;
        }
        DeliverUntil(time);
        clock = time;
        engine.Render(sound);
        meter.Add(sound);
        if (time >= nextSinad) {
            outcome.lowestSinad = std::min(outcome.lowestSinad, meter.Sinad());
            nextSinad += 60.0;
        }
    }
    outcome.underruns = engine.Underruns();
    outcome.trims = engine.Trims();
    outcome.gaps = meter.Gaps();
    outcome.largestStep = meter.LargestStep();
    outcome.peak = meter.Peak();
    if (scene.length > settlingTime && outcome.gaps.empty()) {
        MeasureFill(outcome);
        MeasureRate(outcome);
    }
    return outcome;
}

void Simulation::Prime() {
    const std::vector<std::int16_t> second(static_cast<std::size_t>(nominalRate));
    engine.Push(Engine::NewStream, second.data(), nominalRate);
    engine.Push(nominalRate, second.data(), nominalRate);
}

void Simulation::DeliverUntil(double time) {
    while (arrival <= time) {
        NoteFill(arrival);
        clock = arrival;
        if (!isFrameLost) {
            PushTone(frameSize);
        }
        if (!isBurstOver && arrival >= scene.burstAt) {
            isBurstOver = true;
            PushTone(static_cast<std::size_t>(scene.burstLength * nominalRate));
        }
        arrival = NextArrival();
    }
    NoteFill(time);
}

void Simulation::PushTone(std::size_t samples) {
    std::vector<std::int16_t> block(samples);
    const double step = 2.0 * std::numbers::pi * scene.tone / nominalRate;
    for (std::int16_t& sample : block) {
        const double index = static_cast<double>(generated++);
        const double level = std::min(index / (ToneMeter::fadeIn * nominalRate), 1.0);
        sample = static_cast<std::int16_t>(
            std::lrint(16384.0 * level * level * (3.0 - 2.0 * level) * std::sin(step * index)));
    }
    engine.Push(static_cast<std::int64_t>(samples), block.data(), nominalRate);
}

double Simulation::NextArrival() {
    const double trueRate = nominalRate * (1.0 + scene.clockError);
    const double made = static_cast<double>(++frames * frameSize) / trueRate;
    double time = std::max(arrival, made + scene.jitter * Uniform());
    if (scene.stallEvery > 0.0 && time >= nextStall) {
        stallUntil = nextStall + scene.stallLength * Uniform();
        nextStall += scene.stallEvery;
    }
    time = std::max(time, stallUntil);
    const bool isOut = time >= scene.outageAt && time < scene.outageAt + scene.outageLength;
    isFrameLost = isOut && scene.isOutageLost;
    return isOut && !isFrameLost ? scene.outageAt + scene.outageLength : time;
}

void Simulation::NoteFill(double time) {
    while (static_cast<double>(arrived.size()) * noteInterval < time) {
        arrived.push_back(static_cast<double>(generated) / nominalRate);
    }
}

void Simulation::MeasureFill(Outcome& outcome) const {
    const std::vector<double>& heard = meter.Heard();
    // The meter's value is for the middle of its 10 ms, a note for their end.
    const auto shift = static_cast<std::size_t>(std::lround(meter.FirstHeardAt() / noteInterval));
    const double early = static_cast<double>(shift) * noteInterval - meter.FirstHeardAt();
    const auto fillAt = [&](std::size_t i) { return arrived[i + shift] - (heard[i] + early); };
    const std::size_t end = std::min(heard.size(), arrived.size() - shift);
    const std::size_t window = 10 * notesPerSecond;
    outcome.lowestFill = outcome.lowestMeanFill = std::numeric_limits<double>::infinity();
    for (auto i = static_cast<std::size_t>(settlingTime / noteInterval); i + window <= end;
         i += window) {
        double sum = 0.0;
        for (std::size_t k = i; k < i + window; ++k) {
            sum += fillAt(k);
            outcome.lowestFill = std::min(outcome.lowestFill, fillAt(k));
        }
        const double mean = sum / static_cast<double>(window);
        outcome.lowestMeanFill = std::min(outcome.lowestMeanFill, mean);
        outcome.highestMeanFill = std::max(outcome.highestMeanFill, mean);
    }
}

void Simulation::MeasureRate(Outcome& outcome) const {
    const std::vector<double>& heard = meter.Heard();
    double last = 0.0;
    double squares = 0.0;
    std::size_t settled = 0;
    for (std::size_t i = notesPerSecond; i < heard.size(); i += notesPerSecond) {
        const double correction = (heard[i] - heard[i - notesPerSecond] - 1.0) * 1e6;
        outcome.largestCorrection = std::max(outcome.largestCorrection, std::abs(correction));
        if (i > notesPerSecond) {
            outcome.largestSlew = std::max(outcome.largestSlew, std::abs(correction - last));
        }
        last = correction;
        if (static_cast<double>(i) * noteInterval > settlingTime) {
            const double error = correction - scene.clockError * 1e6;
            squares += error * error;
            ++settled;
        }
    }
    outcome.errorRms = std::sqrt(squares / static_cast<double>(std::max<std::size_t>(settled, 1)));
}

} // namespace tonebridge::test
