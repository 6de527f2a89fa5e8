// All that the kernels make of a curve, in one array: what their variants must agree on. It belongs to the
// namespace that TslMath is when this is included, so no #pragma once.
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/overlap/InitialEstimates.h>
#include <tslbl/closed/math/peak/SplinePeak.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace TslMath {

class AllResults {
 public:
  explicit AllResults(const std::vector<double>& y)
      : y_(y), x_(y.size()), n_(static_cast<std::uint32_t>(y.size())) {
    for (std::uint32_t i = 0; i < n_; ++i) x_[i] = 5 + 0.05 * i + (i > n_ / 2 ? 10 : 0);
    Smooth();
    FindBaselinesAndNoises();
    DescribePeaks();
    TakePeaksApart();
    values_.push_back(StandardDeviation(y_.data(), n_));
  }

  const std::vector<double>& Values() const { return values_; }

 private:
  template <class Run>
  void Keep(Run run) {
    std::vector<double> out(n_);
    run(out.data());
    values_.insert(values_.end(), out.begin(), out.end());
  }

  void Smooth() {
    for (std::uint32_t width : {3U, 4U, 5U, 7U, 9U, 11U, 13U, 15U, 25U, 31U, 100U, 201U}) {
      Keep([&](double* out) { SmoothMean(y_.data(), n_, 0, n_, width, out); });
      Keep([&](double* out) { SmoothMedian(y_.data(), n_, 0, n_, width, out); });
      Keep([&](double* out) { SmoothGaussian(y_.data(), n_, 0, n_, width, out); });
      Keep([&](double* out) { SmoothSavitzkyGolay(y_.data(), n_, 0, n_, width, 2, out); });
    }
  }

  void FindBaselinesAndNoises() {
    std::vector<double> noise(n_);
    for (std::uint32_t segSize : {60U, 250U}) {
      Keep([&](double* out) { FitLinesSD(y_.data(), n_, segSize, 5, 3, {out, noise.data()}); });
      values_.insert(values_.end(), noise.begin(), noise.end());
      Keep([&](double* out) { FitLinesSD(y_.data(), n_, segSize, 31, 2, {out, nullptr}); });
      Keep([&](double* out) { VFBaseline(y_.data(), n_, segSize, out); });
      Keep([&](double* out) { VFNoise(y_.data(), n_, segSize, out); });
      Keep([&](double* out) { APBMorph(y_.data(), n_, segSize, 100, out); });
      Keep([&](double* out) { APBNoise(x_.data(), y_.data(), n_, segSize, 0, out); });
      Keep([&](double* out) { APBNoise(nullptr, y_.data(), n_, segSize, 5, out); });
    }
  }

  void DescribePeaks() {
    for (std::uint32_t start = 0; start < std::min(n_, 4000U); start += 37) {
      const double index = start;
      const SplinePeak peak(&index, y_.data() + start, std::min(n_ - start, start % 80));
      double top = 0, level = 0, left = 0, right = 0, centroid = 0, height = 0, from = 0, to = 0;
      peak.PeakMax(top, level);
      peak.HalfHeightPeakWidth(0, left, right);
      peak.PeakCentroid(0.4 * level, centroid, height, from, to);
      const double area = peak.PeakArea(0.4 * level, 1, x_.data());
      values_.insert(values_.end(), {top, level, left, right, centroid, height, from, to, area});
    }
  }

  void TakePeaksApart() {
    constexpr std::uint32_t kPoints = 70;
    for (std::uint32_t start = 0; start + kPoints <= std::min(n_, 4000U); start += 373) {
      const std::span<const double> x(x_.data() + start, kPoints);
      const std::span<const double> y(y_.data() + start, kPoints);
      const std::vector<std::int32_t> places = InitialEstimates(true, 3, y);
      std::vector<FittedGaussian> peaks(places.size());
      FitPeaks(false, x, y, places, y.front(), 0.3, peaks);
      for (const FittedGaussian& peak : peaks)
        values_.insert(values_.end(),
                       {peak.height, peak.centre, peak.a3, peak.baseline, peak.fit4, peak.fit5, peak.fit6});
    }
  }

  std::vector<double> y_;
  std::vector<double> x_;
  std::uint32_t n_;
  std::vector<double> values_;
};

}  // namespace TslMath
