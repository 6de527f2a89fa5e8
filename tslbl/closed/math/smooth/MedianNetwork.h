#pragma once
// Medians of narrow windows by sorting networks: neighbouring windows are sorted side by side, without a
// branch.
#include <cstddef>

namespace TslMath {

// The widest window that a network pays for.
constexpr std::size_t kMaxNetworkHalf = 12;

// out[i] = median of y[i-half .. i+half] for first <= i < last; 1 <= half <= kMaxNetworkHalf, at least one
// group of lanes of outputs. y is finite and has no zeros of both signs in one window, so that only one value
// can be the median.
void NetworkMedian(const double* y, std::size_t first, std::size_t last, std::size_t half, double* out);

}  // namespace TslMath
