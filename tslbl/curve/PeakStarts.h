#pragma once
// The first points of peaks whose apexes come in ascending order.
//
// Each is what WalkLeft finds. But where a curve rises like a ramp, every peak on it reaches
// far back, and walking would cost the square of its length. Here every point is looked at
// once, a peak costs the logarithm of what lies between it and the baseline.

#include <tslbl/curve/PeakWalks.h>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace TslBL {

class PeakStarts {
 public:
  // For apexes from `begin` on: the first point of the curve or one where it rises from the
  // baseline.
  PeakStarts(const CurveView& curve, std::ptrdiff_t begin)
      : curve_(curve), next_(std::max<std::ptrdiff_t>(begin - 1, 0)) {}

  // The apex lies above the baseline, and not before that of the call before.
  std::ptrdiff_t Of(std::ptrdiff_t apex, double valley) {
    for (; next_ < apex; ++next_) Pass(next_);
    const double* y = curve_.y;
    const auto low = std::ranges::partition_point(lows_, [=](std::ptrdiff_t i) { return y[i] <= valley; });
    if (low != lows_.begin()) {
      const auto bottom = std::ranges::upper_bound(bottoms_, *(low - 1) + 1);
      if (bottom != bottoms_.begin()) return *(bottom - 1);
    }
    if (foot_ > 0) return foot_;
    return apex > 0 && !(y[1] > y[0]) ? 1 : 0;
  }

 private:
  void Pass(std::ptrdiff_t i) {
    const double* y = curve_.y;
    if (!curve_.AboveBaseline(i)) {
      foot_ = i;
      lows_.clear();
      bottoms_.clear();
    } else if (i > 1 && y[i] < y[i - 1] && y[i] < y[i - 2]) {
      bottoms_.push_back(i);
    }
    while (!lows_.empty() && !(y[lows_.back()] < y[i])) lows_.pop_back();
    lows_.push_back(i);
  }

  CurveView curve_;
  std::ptrdiff_t next_;
  std::ptrdiff_t foot_ = 0;              // the last point that is not above the baseline
  std::vector<std::ptrdiff_t> lows_;     // from there on, points that all behind them exceed
  std::vector<std::ptrdiff_t> bottoms_;  // and bottoms of valleys; both ascending
};

}  // namespace TslBL
