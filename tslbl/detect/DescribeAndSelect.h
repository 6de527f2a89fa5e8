#pragma once
// The two stages behind the finding of features: description fits each candidate and fills
// in the real peak, selection applies the user's limits.

#include <tslbl/detect/FeatureRows.h>
#include <tslbl/detect/LargestPeaks.h>

namespace TslBL {

// Describes every row of the list. A row of fewer than three points becomes null.
LargestPeaks DescribePeaks(const Curve& curve, std::vector<PeakInfo*>& list);

// The same for rows that selection follows: those that are certain to fail it become null
// without a description.
LargestPeaks DescribePromisingPeaks(const Curve& curve, std::vector<PeakInfo*>& list);

// Makes every row null that fails one of the curve's limits. `described` is what relative
// limits refer to; the result is the largest of those that pass.
LargestPeaks SelectPeaks(const Curve& curve, std::vector<PeakInfo*>& list, const LargestPeaks& described);

}  // namespace TslBL
