#pragma once
// What the tests of baselines and noises share: the algorithms by name with their usual parameters, and the
// distance of a result from the truth in units of the true noise.
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/Noise.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>

#include <closed/math/SampleArray.h>
#include <closed/math/SimulatedSpectrum.h>

namespace tests {

struct Algorithm {
  const char* name;
  Samples (*run)(const Samples& y);
};

inline void PrintTo(const Algorithm& algorithm, std::ostream* out) { *out << algorithm.name; }

inline Samples LinearFit(const Samples& y) {
  Samples out(y.size());
  TslMath::LinearFitSDBaseline(y.data(), Size(y), 250, 5, 3, out.data());
  return out;
}

inline Samples Adaptive(const Samples& y) {
  Samples out(y.size());
  TslMath::APBMorph(y.data(), Size(y), 250, 25, out.data());
  return out;
}

inline Samples ValleyFollowing(const Samples& y) {
  Samples out(y.size());
  TslMath::VFBaseline(y.data(), Size(y), 250, out.data());
  return out;
}

inline Samples LinearFitNoise(const Samples& y) {
  Samples out(y.size());
  TslMath::LinearFitSDNoise(y.data(), Size(y), 250, 5, 3, out.data());
  return out;
}

inline Samples ValleyFollowingNoise(const Samples& y) {
  Samples out(y.size());
  TslMath::VFNoise(y.data(), Size(y), 250, out.data());
  return out;
}

inline Samples AdaptiveNoise(Samples y, std::uint32_t median) {
  Samples out(y.size());
  TslMath::APBNoise(nullptr, y.data(), Size(y), 250, median, out.data());
  return out;
}

inline Samples DispersionNoise(const Samples& y) { return AdaptiveNoise(y, 0); }
inline Samples MedianNoise(const Samples& y) { return AdaptiveNoise(y, 5); }

constexpr Algorithm kBaselines[] = {
    {"LinearFitSD", LinearFit}, {"Adaptive", Adaptive}, {"ValleyFollowing", ValleyFollowing}};

constexpr Algorithm kNoises[] = {{"LinearFitSD", LinearFitNoise},
                                 {"ValleyFollowing", ValleyFollowingNoise},
                                 {"Dispersion", DispersionNoise},
                                 {"Median", MedianNoise}};

inline std::string NameOf(const testing::TestParamInfo<Algorithm>& info) { return info.param.name; }

inline double WorstDifference(const Samples& a, const Samples& b) {
  double worst = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const double difference = std::abs(a[i] - b[i]);
    if (!(difference <= worst)) worst = difference;
  }
  return worst;
}

inline double RmsDifference(const Samples& a, const Samples& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
  return std::sqrt(sum / static_cast<double>(a.size()));
}

inline Samples Line(std::size_t n, double start, double slope) {
  Samples y(n);
  for (std::size_t i = 0; i < n; ++i) y[i] = start + slope * static_cast<double>(i);
  return y;
}

// Levels that a constant may have: whole ones, such as no sum of a few gives back to the bit, and the
// largest.
inline Samples AnyLevels() {
  Samples levels{0, 7, -3, 0.1, 1e9, std::numeric_limits<double>::max()};
  std::mt19937_64 random(4);
  std::uniform_real_distribution<double> uniform(-100, 100);
  for (int k = 0; k < 30; ++k) levels.push_back(uniform(random));
  return levels;
}

// 20 peaks of 1000 counts on a line, without noise.
inline Samples WithPeaks(Samples y) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> place(50, static_cast<double>(y.size()) - 50);
  for (int k = 0; k < 20; ++k) AddPeak(y, place(random), 1000, 5);
  return y;
}

inline Samples Mirrored(const Samples& y) { return Samples(y.rbegin(), y.rend()); }

inline bool AllFinite(const Samples& y) {
  return std::all_of(y.begin(), y.end(), [](double v) { return std::isfinite(v); });
}

// More points than 16 bits count, of which the last 8000 begin with a segment of 250 as well as one of 500.
inline const SimulatedSpectrum& LongSpectrum() {
  static const SimulatedSpectrum spectrum = Simulate({Background::Flat, 5, 0.1}, 8, 76000);
  return spectrum;
}

// How far a result on the whole of it is from that on its last points, away from their ends.
inline double DifferenceOnLastPoints(const Algorithm& algorithm) {
  const Samples& y = LongSpectrum().y;
  const Samples whole = algorithm.run(y);
  const Samples last = algorithm.run(Samples(y.end() - 8000, y.end()));
  return WorstDifference(Samples(whole.end() - 5000, whole.end() - 3000),
                         Samples(last.end() - 5000, last.end() - 3000));
}

// 20 000 counts around 5 with 100 peaks.
inline const SimulatedSpectrum& UsualSpectrum() {
  static const SimulatedSpectrum spectrum = Simulate({Background::Flat, 5, 0.1}, 7);
  return spectrum;
}

}  // namespace tests
