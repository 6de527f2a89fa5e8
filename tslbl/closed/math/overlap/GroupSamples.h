#pragma once
// The points of a group of overlapped peaks, as the fit reads them.
#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace TslMath {

// Points are worked on in blocks of so many, and so many at a time; the last step is filled up with points
// that weigh nothing.
constexpr std::size_t kGroupBlock = 64;
constexpr std::size_t kGroupStep = 8;

// Amplitudes are divided by a power of two, `Scale()`, so that the largest magnitude lies from 1 to 2: fits
// of scaled counts take the same steps, and nothing overflows.
class GroupSamples {
 public:
  // Both of one length, which is not 0. All finite, not all amplitudes 0; `IsUsable` tells.
  GroupSamples(std::span<const double> x, std::span<const double> y);
  static bool IsUsable(std::span<const double> x, std::span<const double> y);

  std::size_t Size() const { return size_; }
  std::size_t BlockCount() const { return extents_.size(); }
  // Points of a block, with the filling.
  std::size_t CountOf(std::size_t block) const {
    return std::min(kGroupBlock, x_.size() - block * kGroupBlock);
  }
  double Scale() const { return scale_; }
  // Arrays of whole steps, `PaddedSize()` points.
  std::size_t PaddedSize() const { return x_.size(); }
  const double* X() const { return x_.data(); }
  const double* Y() const { return y_.data(); }
  const double* RootWeights() const { return rootWeights_.data(); }
  // The points without the filling.
  std::span<const double> Amplitudes() const { return {y_.data(), size_}; }
  // The least and the largest x of a block.
  struct Interval {
    double first;
    double last;
  };
  const Interval& Extent(std::size_t block) const { return extents_[block]; }

  // What deviations from a fitted curve mean nothing, besides noise: a share of the curve there, and a value.
  struct Tolerance {
    double share = 0.0;
    double value = 0.0;
  };

  // Weighs each point by 1 / (the variance of a count of this mean + the squares of the tolerances). Means
  // are not taken for less than a thousandth of the largest amplitude.
  void WeighBy(std::span<const double> means, const Tolerance& tolerance);
  void WeighBy(std::span<const double> means) { WeighBy(means, {}); }

 private:
  std::size_t size_;
  double scale_;
  double leastMean_;
  std::vector<double> x_;
  std::vector<double> y_;
  std::vector<double> rootWeights_;
  std::vector<Interval> extents_;
};

}  // namespace TslMath
