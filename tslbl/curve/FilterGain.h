#pragma once
// What a filter makes of a peak's height and width.

#include <tslbl/Export.h>
#include <span>
#include <vector>

namespace TslBL {

// For Gaussian peaks. The table of one filter: made once, read by any number of threads.
class TSLBL_API FilterGain {
 public:
  // Weights as QFilterWeights gives them. Throws std::invalid_argument if their number is not odd, as where
  // QFilterWeights knows none.
  explicit FilterGain(std::span<const double> weights);

  // Height behind the filter over height before it, for a peak that is `width` points wide at half height
  // behind it. Within 1e-3 for peaks of two points or more before the filter, as long as their width behind
  // it follows that before it by at least a tenth: from 0.32 of the window of Savitzky-Golay of order 2 on,
  // 0.2 of order 4, 0.55 of a mean, and a third of the width of a Gaussian. The width of narrower peaks says
  // too little; they get the figure of those. 1 for very wide peaks. Rises with the width.
  double Of(double width) const;

  // How many points wide at half height a peak is before the filter that is `width` points wide behind it,
  // for the same peaks. Narrower ones get the width of those, or their own if it is less. Rises with the
  // width.
  double WidthBefore(double width) const;

 private:
  // The figure for this width behind the filter, between those of the table.
  double Between(const std::vector<double>& figures, double width) const;

  std::vector<double> widths_;  // behind the filter, ascending
  std::vector<double> gains_;
  std::vector<double> shares_;  // width before over behind it
};

}  // namespace TslBL
