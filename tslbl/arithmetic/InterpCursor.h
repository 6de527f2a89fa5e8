#pragma once
// A spectrum read between its points, from left to right.
//
// For the sources of the library; not part of its interface.

#include <tslbl/spectrum/Spectrum.h>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace TslBL {

struct InterpValue {
  double value = 0.0;
  bool exists = false;
};

// Queries come in ascending x. The spectrum must outlive the cursor and not change.
class InterpCursor {
 public:
  // `count` is how many spectra were summed into this one.
  InterpCursor(const Spectrum& source, std::uint32_t count)
      : x_(source.xAxis.data()),
        end_(x_ + std::min(source.xAxis.size(), source.yAxis.size())),
        y_(source.yAxis.data()),
        count_(count) {}

  std::uint32_t Count() const { return count_; }

  // The amplitude at x, on the straight line between the points beside it; nothing outside the axis. What
  // rounding puts beside one of its ends is at that end.
  InterpValue At(double x) {
    if (IsInNextStep(x)) {
      ++x_;
      ++y_;
      return ValueHere(x);
    }
    if (x_ == end_ || !(*x_ <= x + kRounding)) return {};
    const double* found = FirstNotBelow(x);
    if (found == end_ && end_[-1] >= x - kRounding) found = end_ - 1;
    MoveTo(found, x);
    return x_ == end_ ? InterpValue() : ValueHere(x);
  }

 private:
  // As where axes have the same steps: no search is needed then.
  bool IsInNextStep(double x) const { return end_ - x_ > 2 && x_[1] <= x && x < x_[2]; }

  InterpValue ValueHere(double x) const {
    if (*x_ >= x || x_ + 1 == end_) return {*y_, true};
    return {(y_[1] - y_[0]) / (x_[1] - x_[0]) * (x - x_[0]) + y_[0], true};
  }

  // Mostly the next point or the one after it, so that strides that double find it sooner than halves do.
  const double* FirstNotBelow(double x) const {
    const double* low = x_;
    for (std::ptrdiff_t stride = 1; low != end_ && *low < x; stride *= 2) {
      if (end_ - low <= stride || !(low[stride] < x))
        return std::lower_bound(low + 1, low + 1 + std::min(stride, end_ - 1 - low), x);
      low += stride;
    }
    return low;
  }

  void MoveTo(const double* found, double x) {
    const double* at = found != end_ && found != x_ && *found > x ? found - 1 : found;
    y_ += at - x_;
    x_ = at;
  }

  static constexpr double kRounding = 1e-9;  // m/z

  const double* x_;
  const double* end_;
  const double* y_;
  std::uint32_t count_;
};

}  // namespace TslBL
