#pragma once
// Short forms for the tests of the smoothing filters.

#include <OracleTable.h>
#include <gtest/gtest.h>

#include <tslbl/closed/math/smooth/Smoothing.h>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <closed/math/SampleArray.h>

namespace tests {

using Numbers = std::vector<std::uint32_t>;
using Lengths = std::vector<std::size_t>;
using Filter = std::function<void(const double*, std::uint32_t, std::uint32_t, std::uint32_t, double*)>;

inline Filter Mean(std::uint32_t width) {
  return [=](const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end, double* out) {
    TslMath::SmoothMean(y, n, start, end, width, out);
  };
}

inline Filter Median(std::uint32_t width) {
  return [=](const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end, double* out) {
    TslMath::SmoothMedian(y, n, start, end, width, out);
  };
}

inline Filter Gaussian(std::uint32_t width) {
  return [=](const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end, double* out) {
    TslMath::SmoothGaussian(y, n, start, end, width, out);
  };
}

inline Filter SavitzkyGolay(std::uint32_t width, std::uint32_t order) {
  return [=](const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t end, double* out) {
    TslMath::SmoothSavitzkyGolay(y, n, start, end, width, order, out);
  };
}

inline Samples Smooth(const Filter& filter, const Samples& y) {
  Samples out(y.size(), -1e30);
  filter(y.data(), Size(y), 0, Size(y), out.data());
  return out;
}

// Seeded, so every run sees the same data.
inline Samples Counts(std::size_t n, double mean = 20) {
  std::mt19937_64 random(n);
  std::poisson_distribution<int> counts(mean);
  Samples y(n);
  for (double& value : y) value = counts(random);
  return y;
}

inline Samples Noise(std::size_t n) {
  std::mt19937_64 random(n + 1);
  std::normal_distribution<double> normal(0, 1000);
  Samples y(n);
  for (double& value : y) value = normal(random);
  return y;
}

inline Samples Tabulate(std::size_t n, const std::function<double(double)>& f) {
  Samples y(n);
  for (std::size_t i = 0; i < n; ++i) y[i] = f(static_cast<double>(i));
  return y;
}

inline Samples Line(std::size_t n) {
  return Tabulate(n, [](double i) { return 3 * i - 7; });
}

inline double LargestMagnitude(const Samples& y) {
  double largest = 0;
  for (double value : y) largest = std::max(largest, std::abs(value));
  return largest;
}

// `relative` to the largest expected magnitude. Where the expectation is NaN nothing is asked.
inline void ExpectNear(const Samples& expected, const Samples& got, double relative) {
  ASSERT_EQ(expected.size(), got.size());
  Samples known;
  for (double value : expected) known.push_back(std::isnan(value) ? 0 : value);
  const double tolerance = relative * LargestMagnitude(known);
  for (std::size_t i = 0; i < got.size(); ++i) {
    if (std::isnan(expected[i])) continue;
    ASSERT_NEAR(expected[i], got[i], tolerance) << "at " << i << " of " << got.size();
  }
}

// The column "name arguments" of tests/data/smoothing.csv (tests/oracles/smoothing.py).
inline void ExpectOracle(const Filter& filter, const std::string& column, double relative) {
  SCOPED_TRACE(column);
  const OracleTable oracle("smoothing.csv");
  ExpectNear(oracle[column], Smooth(filter, oracle["y"]), relative);
}

// The weights of a filter at the centre of a long curve: its answer to a single 1.
inline Samples Weights(const Filter& filter, std::size_t n) {
  Samples y(n);
  y[n / 2] = 1;
  return Smooth(filter, y);
}

inline double NoiseGain(const Filter& filter) {
  double sum = 0;
  for (double w : Weights(filter, 2001)) sum += w * w;
  return std::sqrt(sum);
}

}  // namespace tests
