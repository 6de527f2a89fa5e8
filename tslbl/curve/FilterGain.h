#pragma once
// How much of a peak's height a filter leaves.

#include <tslbl/Export.h>
#include <span>
#include <vector>

namespace TslBL {

// For Gaussian peaks. The table of one filter: made once, read by any number of threads.
class TSLBL_API FilterGain {
 public:
  // Weights as QFilterWeights gives them, not empty.
  explicit FilterGain(std::span<const double> weights);

  // Height behind the filter over height before it, for a peak that is `width` points wide at half height
  // behind it. Within 1e-3 from a third of the filter's width on; of narrower peaks that at a third.
  double Of(double width) const;

 private:
  std::vector<double> widths_;  // behind the filter, ascending
  std::vector<double> gains_;
};

}  // namespace TslBL
