#pragma once
// From an apex down to where its peak begins and ends: the first local minimum once the
// curve has fallen to the valley level, or the point at which it meets the baseline.

#include <cstddef>

namespace TslBL {

// A stretch of amplitudes with the baseline under them.
struct CurveView {
  const double* y;
  const double* baseline;
  std::ptrdiff_t n;

  // False where either is not a number, so that no peak reaches across a gap in the data.
  bool AboveBaseline(std::ptrdiff_t i) const { return y[i] > baseline[i]; }
  // No peak reaches across such a point, so a sweep may begin there afresh. i is above 0.
  bool RisesFromBaseline(std::ptrdiff_t i) const {
    return AboveBaseline(i) && !AboveBaseline(i - 1) && y[i] > y[i - 1];
  }
};

// The first point of a peak with its apex at i.
inline std::ptrdiff_t WalkLeft(const CurveView& curve, std::ptrdiff_t i, double valley) {
  const double* y = curve.y;
  std::ptrdiff_t k = i;
  bool low = false;
  for (; k > 1; --k) {
    low = low || y[k - 1] <= valley;
    if (low && y[k] < y[k - 1] && y[k] < y[k - 2]) return k;
    if (!curve.AboveBaseline(k - 1)) return k - 1;
  }
  return k == 1 && y[1] > y[0] ? 0 : k;
}

// The last point of a peak with its apex at i: the mirror image of WalkLeft.
inline std::ptrdiff_t WalkRight(const CurveView& curve, std::ptrdiff_t i, double valley) {
  const double* y = curve.y;
  const std::ptrdiff_t n = curve.n;
  std::ptrdiff_t k = i;
  bool low = false;
  for (; k < n - 2; ++k) {
    low = low || y[k + 1] <= valley;
    if (low && y[k] < y[k + 1] && y[k] < y[k + 2]) return k;
    if (!curve.AboveBaseline(k + 1)) return k + 1;
  }
  return k == n - 2 && y[k] > y[k + 1] ? k + 1 : k;
}

}  // namespace TslBL
