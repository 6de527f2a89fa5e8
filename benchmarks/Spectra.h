#pragma once
// Spectra to measure on, and the yardstick: copying the same doubles.
//
// A benchmark that works on points ends with ReportPoints, so that all are told in points per second.
// Register CopyPoints in the same file and the same run: its rate is what the memory allows.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace Spectra {

// m/z 5 to 3000 in steps of 0.05.
constexpr std::uint32_t PointCount = 59901;
constexpr double FirstMz = 5;
constexpr double StepMz = 0.05;

inline std::vector<double> Axis(std::uint32_t n = PointCount) {
  std::vector<double> x(n);
  for (std::uint32_t i = 0; i < n; ++i) x[i] = FirstMz + StepMz * i;
  return x;
}

// Adds a Gaussian peak 0.6 m/z wide at half height.
inline void AddPeak(std::vector<double>& y, double height, double centreMz) {
  const double sigma = 0.6 / 2.3548200450309493 / StepMz;
  const double centre = (centreMz - FirstMz) / StepMz;
  const double last = std::min(static_cast<double>(y.size()), centre + 6 * sigma);
  for (double i = std::max(0.0, std::floor(centre - 6 * sigma)); i < last; ++i) {
    const double u = (i - centre) / sigma;
    y[static_cast<std::size_t>(i)] += height * std::exp(-0.5 * u * u);
  }
}

// Counts: a background of 5 a point, and for every 10 m/z a peak of 20 to 20 000 counts. The same in every
// run.
inline std::vector<double> Counts(std::uint32_t n = PointCount) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> place(FirstMz, FirstMz + StepMz * n);
  std::uniform_real_distribution<double> logHeight(std::log(20.0), std::log(20000.0));
  std::vector<double> y(n, 5.0);
  for (std::uint32_t k = 0; k < n / 200; ++k) AddPeak(y, std::exp(logHeight(random)), place(random));
  for (double& value : y) value = std::poisson_distribution<int>(value)(random);
  return y;
}

inline void ReportPoints(benchmark::State& state, std::uint32_t pointsPerRound = PointCount) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(pointsPerRound));
}

inline void CopyPoints(benchmark::State& state) {
  const std::vector<double> y = Counts();
  std::vector<double> out(y.size());
  for (auto _ : state) {
    std::memcpy(out.data(), y.data(), y.size() * sizeof(double));
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  ReportPoints(state);
}

}  // namespace Spectra
