#include "demo/Fft.h"

#include <cmath>
#include <utility>

namespace larkspool::demo {

Fft::Fft(std::size_t length) : reversed(length), turns(length / 2) {
    for (std::size_t i = 1; i < length; ++i) {
        reversed[i] = (reversed[i / 2] + (i % 2 == 1 ? length : 0)) / 2;
    }
    for (std::size_t i = 0; i < turns.size(); ++i) {
        const double angle = -Turn * static_cast<double>(i) / static_cast<double>(length);
        turns[i] = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    }
}

void Fft::Forward(std::span<Sample> data) const {
    const std::size_t size = Size();
    for (std::size_t i = 0; i < size; ++i) {
        if (i < reversed[i]) {
            std::swap(data[i], data[reversed[i]]);
        }
    }
    for (std::size_t half = 1; half < size; half *= 2) {
        const std::size_t stride = size / (2 * half);
        for (std::size_t base = 0; base < size; base += 2 * half) {
            for (std::size_t i = 0; i < half; ++i) {
                const Sample odd = Times(data[base + half + i], turns[i * stride]);
                data[base + half + i] = data[base + i] - odd;
                data[base + i] += odd;
            }
        }
    }
}

void Fft::Inverse(std::span<Sample> data) const {
    const float scale = 1.0F / static_cast<float>(Size());
    for (Sample& value : data) {
        value = std::conj(value);
    }
    Forward(data);
    for (Sample& value : data) {
        value = std::conj(value) * scale;
    }
}

} // namespace larkspool::demo
