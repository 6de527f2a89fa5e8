#pragma once
// A sum of peaks over a constant baseline:
//   y(x) = baseline + sum over k of heights[k] exp(-u^2 / 2),   u = (x - tops[k]) / (widths[k] (1 + skew))
// on the right of a top; on its left the skew has the other sign. All peaks of a group share one skew, which
// is above 0 for peaks that tail to the right. With a skew of 0 they are Gaussians, widths being standard
// deviations. Whatever the skew, height, width and area go together as they do in a Gaussian.
#include <tslbl/Export.h>
#include <tslbl/closed/math/overlap/GroupSamples.h>

#include <cstddef>
#include <span>
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

// The numbers of a sum that a fit may change, the others are kept. Heights it always may.
struct FreeTerms {
  enum class Widths { Kept, Shared, Own };
  bool places = true;
  Widths widths = Widths::Shared;
  bool skew = false;
  bool baseline = true;
};

// Where in the array of free numbers each of them stands: heights, tops, widths, skew, baseline.
class TermOrder {
 public:
  TermOrder(std::size_t peaks, const FreeTerms& free) : peaks_(peaks), free_(free) {}

  const FreeTerms& Free() const { return free_; }
  std::size_t Peaks() const { return peaks_; }
  std::size_t Height(std::size_t peak) const { return peak; }
  std::size_t Top(std::size_t peak) const { return peaks_ + peak; }
  std::size_t Width(std::size_t peak) const { return peaks_ + TopCount() + (HasOwnWidths() ? peak : 0); }
  std::size_t Skew() const { return peaks_ + TopCount() + WidthCount(); }
  std::size_t Baseline() const { return Skew() + (free_.skew ? 1 : 0); }
  std::size_t Count() const { return Baseline() + (free_.baseline ? 1 : 0); }

  bool HasOwnWidths() const { return free_.widths == FreeTerms::Widths::Own; }
  bool HasSharedWidth() const { return free_.widths == FreeTerms::Widths::Shared; }
  std::size_t WidthCount() const { return HasOwnWidths() ? peaks_ : HasSharedWidth() ? 1 : 0; }

 private:
  std::size_t TopCount() const { return free_.places ? peaks_ : 0; }

  std::size_t peaks_;
  FreeTerms free_;
};

}  // namespace TslMath
