#pragma once
// What the smoothing filters share: the clamped stretch, the input kept apart from the output, and the
// symmetrically shrinking window.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace TslMath {

// The indexes first .. last-1 of a curve of n points. Wide indexes: a window may reach past 2^32 in between.
struct SmoothStretch {
  std::size_t n;
  std::size_t first;
  std::size_t last;

  static SmoothStretch Clamped(std::uint32_t n, std::uint32_t start, std::uint32_t end) {
    return {n, start, std::min(n, end)};
  }

  bool Empty() const { return first >= last; }

  // The most points that a window of this curve can have on each side.
  std::size_t WidestHalf() const { return (n - 1) / 2; }

  // Points on each side of i in a window that shrinks symmetrically at the ends.
  std::size_t HalfAt(std::size_t i, std::size_t half) const { return std::min({half, i, n - 1 - i}); }

  // The three zones of a stretch, with half <= WidestHalf(): windows cut by the left end of the curve, whole
  // windows, windows cut by the right end. Each may be empty.
  SmoothStretch LeftEnd(std::size_t half) const { return {n, first, std::min(last, half)}; }
  SmoothStretch Inside(std::size_t half) const {
    return {n, std::max(first, half), std::min(last, n - half)};
  }
  SmoothStretch RightEnd(std::size_t half) const { return {n, std::max(first, n - half), last}; }
};

// The input of a filter, copied only if the filter would overwrite it while still reading it.
class SmoothInput {
 public:
  SmoothInput(const double* y, const SmoothStretch& stretch, const double* out) : y_(y) {
    const std::less<const double*> before;
    if (before(y, out + stretch.last) && before(out + stretch.first, y + stretch.n)) {
      copy_.assign(y, y + stretch.n);
      y_ = copy_.data();
    }
  }

  const double* Data() const { return y_; }

 private:
  std::vector<double> copy_;
  const double* y_;
};

inline void CopyStretch(const double* y, const SmoothStretch& stretch, double* out) {
  if (out != y) std::copy(y + stretch.first, y + stretch.last, out + stretch.first);
}

}  // namespace TslMath
