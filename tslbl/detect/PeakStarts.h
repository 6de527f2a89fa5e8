#pragma once
// The first points of peaks whose apexes come in ascending order.
//
// Each is what WalkLeft finds. But where a curve rises like a ramp, every peak on it reaches
// far back, and walking would cost the square of its length. Here every point is looked at
// once, a peak costs the logarithm of what lies between it and the baseline.
//
// An example, with the baseline at 0:
//
//   point  0  1  2  3  4  5  6  7  8  9 10 11
//   y      0  4  5  1  6  7  3  8  9  2  7  0
//
// The curve begins to rise at the points 3, 6 and 9: these are its feet, and here the bottoms of its
// valleys too. The peak at 8 has the feet 3 and 6 (y = 1, 3) before it. It starts at the last of them
// that is not above its valley level: at 6 for a level of 4, at 3 for a level of 2, and where the curve
// leaves the baseline for a level below 1. For the peak at 10 the foot at 9 (y = 2) takes the place of
// the one at 6: a peak that would stop at 6 stops at 9 already. The foot at 3 stays, as it is lower.

#include <tslbl/detect/PointBits.h>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace TslBL {

class PeakStarts {
 public:
  // For apexes from the first point of `bits` on: the first point of the curve, or one that is
  // not above the baseline.
  PeakStarts(const CurveView& curve, const BitsOfStretch& bits, std::ptrdiff_t first)
      : curve_(curve), bits_(bits), next_(first) {}

  // The apex lies above the baseline, and not before that of the call before.
  std::ptrdiff_t Of(std::ptrdiff_t apex, double valley) {
    PassTo(apex);
    const std::ptrdiff_t bottom = BottomOf(valley);
    if (bottom > base_) return bottom;
    if (base_ > 0) return base_;
    return apex > 0 && !(curve_.y[1] > curve_.y[0]) ? 1 : 0;
  }

 private:
  // Where the curve begins to rise, and the last bottom of a valley up to there.
  struct Foot {
    double y;
    std::ptrdiff_t bottom;
  };

  void PassTo(std::ptrdiff_t apex) {
    const std::ptrdiff_t base = bits_.Previous(apex - 1, next_, [](const PointBits& b) { return ~b.above; });
    if (base >= next_) {
      base_ = next_ = bottom_ = base;
      feet_.clear();
    }
    const auto isFoot = [](const PointBits& b) { return b.foot; };
    for (std::ptrdiff_t i = bits_.Next(next_, apex, isFoot); i < apex; i = bits_.Next(i + 1, apex, isFoot)) {
      const std::ptrdiff_t bottom = bits_.Previous(i, next_, [](const PointBits& b) { return b.bottom; });
      if (bottom >= next_) bottom_ = bottom;
      next_ = i + 1;
      while (!feet_.empty() && !(feet_.back().y < curve_.y[i])) feet_.pop_back();
      feet_.push_back({curve_.y[i], bottom_});
    }
  }

  // The last bottom of a valley before the curve, looked at from the apex, rises above `valley`
  // for good; base_ if there is none.
  std::ptrdiff_t BottomOf(double valley) const {
    constexpr std::ptrdiff_t kNear = 4;
    auto end = feet_.end();
    for (std::ptrdiff_t k = 0; k < kNear && end != feet_.begin(); ++k, --end)
      if ((end - 1)->y <= valley) return (end - 1)->bottom;
    end = std::partition_point(feet_.begin(), end, [=](const Foot& foot) { return foot.y <= valley; });
    return end != feet_.begin() ? (end - 1)->bottom : base_;
  }

  const CurveView& curve_;
  const BitsOfStretch& bits_;
  std::ptrdiff_t next_;
  std::ptrdiff_t base_ = 0;    // the last point that is not above the baseline
  std::ptrdiff_t bottom_ = 0;  // the last bottom of a valley behind it
  std::vector<Foot> feet_;     // behind it, those that all behind them exceed; ascending
};

}  // namespace TslBL
