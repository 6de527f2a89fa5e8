#pragma once
// A sum of peaks over a constant baseline:
//   y(x) = baseline + sum over k of heights[k] exp(-u^2 / 2),   u = (x - tops[k]) / (widths[k] (1 + skew))
// on the right of a top; on its left the skew has the other sign. All peaks of a group share one skew, which
// is above 0 for peaks that tail to the right. With a skew of 0 they are Gaussians, widths being standard
// deviations. Whatever the skew, height, width and area go together as they do in a Gaussian.
#include <tslbl/Export.h>

#include <cstddef>
#include <vector>

namespace TslMath {

struct TSLBL_API PeakSum {
  std::vector<double> heights;
  std::vector<double> tops;
  std::vector<double> widths;
  double skew = 0.0;
  double baseline = 0.0;

  std::size_t Count() const { return tops.size(); }
  double At(double x) const;
  double Area(std::size_t peak) const;
  // The centre of gravity of a peak.
  double Centroid(std::size_t peak) const { return tops[peak] + kShiftPerSkew * skew * widths[peak]; }
  static constexpr double kShiftPerSkew = 1.5957691216057308;  // in widths: 2 sqrt(2 / pi)
};

// The peaks in ascending order of their tops.
std::vector<std::size_t> OrderOfTops(const PeakSum& sum);

}  // namespace TslMath
