#pragma once
// Poisson counts and what a filter makes of them.
#include <closed/math/SampleArray.h>
#include <tslbl/closed/math/smooth/Smoothing.h>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace tests {

// `mean` counts a point.
inline Samples Shots(double mean, std::size_t n, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::poisson_distribution<int> counts(mean);
  Samples y(n);
  for (double& value : y) value = counts(random);
  return y;
}

// One ion at every `spacing` points: a mean of 1 / spacing, and so a variance of that less its square.
inline Samples EvenIons(std::size_t n, std::size_t spacing) {
  Samples y(n, 0.0);
  for (std::size_t i = spacing / 2; i < n; i += spacing) y[i] = 1.0;
  return y;
}

inline double MeanOf(const Samples& y, std::size_t begin, std::size_t end) {
  double sum = 0.0;
  for (std::size_t i = begin; i < end; ++i) sum += y[i];
  return sum / static_cast<double>(end - begin);
}

// Adds a peak of 12 points width at half height.
inline void AddShotPeak(Samples& y, double centre, double height, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double u = (static_cast<double>(i) - centre) / 5.096;
    const double mean = height * std::exp(-0.5 * u * u);
    if (mean > 1e-6) y[i] += std::poisson_distribution<int>(mean)(random);
  }
}

// Savitzky-Golay of order 2 over `width` points, negative swings included, and an offset.
inline Samples Filtered(const Samples& y, std::uint32_t width, double offset = 0.0) {
  const auto n = static_cast<std::uint32_t>(y.size());
  Samples filtered(n);
  TslMath::SmoothSavitzkyGolay(y.data(), n, 0, n, width, 2, filtered.data());
  for (double& value : filtered) value += offset;
  return filtered;
}

// As the smooth step leaves it.
inline Samples WithoutNegatives(Samples y) {
  for (double& value : y) value = value < 0.0 ? 0.0 : value;
  return y;
}

// sum(w^2) of that filter: its weight in the middle, as it is a least-squares filter.
inline double HeightOfAnIon(std::uint32_t width) {
  Samples ion(2 * width + 1, 0.0);
  ion[width] = 1.0;
  return Filtered(ion, width)[width];
}

}  // namespace tests
