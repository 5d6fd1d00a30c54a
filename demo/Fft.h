#pragma once

#include <complex>
#include <cstddef>
#include <numbers>
#include <span>
#include <vector>

namespace larkspool::demo {

inline constexpr double Turn = 2.0 * std::numbers::pi; // radians

// One complex sample or bin; its squared magnitude is a power in milliwatts.
using Sample = std::complex<float>;

// The plain product: std::complex checks for infinities, which costs more than the product.
inline Sample Times(const Sample& a, const Sample& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// A discrete Fourier transform in place for one power of two; holds the tables for it.
class Fft {
  public:
    explicit Fft(std::size_t length);

    std::size_t Size() const { return reversed.size(); }

    // data has exactly Size() elements. Inverse divides by Size().
    void Forward(std::span<Sample> data) const;
    void Inverse(std::span<Sample> data) const;

  private:
    std::vector<std::size_t> reversed;
    std::vector<Sample> turns;
};

} // namespace larkspool::demo
