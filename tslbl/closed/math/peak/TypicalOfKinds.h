#pragma once
// The one width that suits peaks of several widths.
#include <tslbl/Export.h>

#include <vector>

namespace TslMath {

struct WeightedWidth {
  double width;
  double weight;  // above 0
};

// The weighted median; but what smooths broad peaks well ruins narrow ones, so that the width that `share` of
// the weight does not exceed is taken where it is below 0.6 of the median. At least one width.
TSLBL_API double TypicalOfKinds(std::vector<WeightedWidth> widths, double share);

}  // namespace TslMath
