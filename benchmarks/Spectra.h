#pragma once
// Spectra to measure on, and the yardstick: copying the same doubles.
//
// Each benchmark tells its median time a point (ns_per_point) and over that of copying the same doubles in
// the same run (x_copy).

#include <benchmark/benchmark.h>
#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace Spectra {

// m/z 5 to 3000 in steps of 0.05.
constexpr std::uint32_t kPointCount = 59901;
constexpr double kFirstMz = 5;
constexpr double kStepMz = 0.05;

inline std::vector<double> Axis(std::uint32_t n = kPointCount) {
  std::vector<double> x(n);
  for (std::uint32_t i = 0; i < n; ++i) x[i] = kFirstMz + kStepMz * i;
  return x;
}

// Adds a Gaussian peak 0.6 m/z wide at half height.
inline void AddPeak(std::vector<double>& y, double height, double centreMz) {
  const double sigma = 0.6 / 2.3548200450309493 / kStepMz;
  const double centre = (centreMz - kFirstMz) / kStepMz;
  const double last = std::min(static_cast<double>(y.size()), centre + 6 * sigma);
  for (double i = std::max(0.0, std::floor(centre - 6 * sigma)); i < last; ++i) {
    const double u = (i - centre) / sigma;
    y[static_cast<std::size_t>(i)] += height * std::exp(-0.5 * u * u);
  }
}

// Counts: a background of 5 a point, and for every 10 m/z a peak of 20 to 20 000 counts. The same in every
// run.
inline std::vector<double> Counts(std::uint32_t n = kPointCount) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> place(kFirstMz, kFirstMz + kStepMz * n);
  std::uniform_real_distribution<double> logHeight(std::log(20.0), std::log(20000.0));
  std::vector<double> y(n, 5.0);
  for (std::uint32_t k = 0; k < n / 200; ++k) AddPeak(y, std::exp(logHeight(random)), place(random));
  for (double& value : y) value = std::poisson_distribution<int>(value)(random);
  return y;
}

// What the thread has worked, in ns: time in which others had the processor does not count.
inline double WorkedNanoseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return 1e9 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec);
}

// The time that work takes, in ns.
template <class Work>
double Nanoseconds(Work work) {
  const double start = WorkedNanoseconds();
  work();
  return WorkedNanoseconds() - start;
}

inline double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Short work is repeated within a round, so that reading the clock does not count.
inline std::uint32_t RepeatsInARound(std::uint32_t points) { return std::max(1U, kPointCount / points); }

// What copying so many doubles takes, in ns: warm, the median of rounds of 20 million doubles in all.
inline double CopyNanoseconds(std::uint32_t points) {
  constexpr std::uint32_t allPoints = 20'000'000;
  const std::vector<double> from(points, 1.0);
  std::vector<double> to(points, 2.0);
  const std::uint32_t repeats = RepeatsInARound(points);
  std::vector<double> rounds(std::max(5U, allPoints / (points * repeats)));
  for (double& round : rounds) {
    round = Nanoseconds([&] {
      for (std::uint32_t k = 0; k < repeats; ++k) {
        std::memcpy(to.data(), from.data(), points * sizeof(double));
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
      }
    });
  }
  return Median(rounds) / repeats;
}

// Runs the work on `points` points and reports medians of its rounds, which other work on the machine hardly
// moves: ns_per_point, and x_copy, its time over that of copying as many doubles, taken just before.
template <class Work>
void Measure(benchmark::State& state, std::uint32_t points, Work work) {
  const double copy = CopyNanoseconds(points);
  const std::uint32_t repeats = RepeatsInARound(points);
  std::vector<double> rounds;
  for (auto _ : state) {
    rounds.push_back(Nanoseconds([&] {
      for (std::uint32_t k = 0; k < repeats; ++k) {
        work();
        benchmark::ClobberMemory();
      }
    }));
  }
  const double call = Median(rounds) / repeats;
  state.counters["ns_per_point"] = call / points;
  state.counters["x_copy"] = call / copy;
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points) * repeats);
}

// Measures run(y, out) on the counts of a spectrum.
template <class Run>
void MeasureOnCounts(benchmark::State& state, std::uint32_t points, Run run) {
  std::vector<double> y = Counts(points);
  std::vector<double> out(points);
  Measure(state, points, [&] {
    run(y.data(), out.data());
    benchmark::DoNotOptimize(out.data());
  });
}

}  // namespace Spectra
